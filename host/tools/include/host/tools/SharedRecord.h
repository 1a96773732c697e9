#pragma once

/// Exports a member function of a record that the host declares and the mechanism library partly defines: the
/// library is built with hidden visibility, so such members are exported one by one.
#if defined(_WIN32)
#if defined(mechanism_EXPORTS)
#define MECHANISM_SHARED_RECORD __declspec(dllexport)
#else
#define MECHANISM_SHARED_RECORD __declspec(dllimport)
#endif
#else
#define MECHANISM_SHARED_RECORD __attribute__((visibility("default")))
#endif

/// Exports the type information of such a record where it has virtual members, so that all libraries share
/// one run-time type. On Windows exporting the members is enough.
#if defined(_WIN32)
#define MECHANISM_SHARED_TYPE
#else
#define MECHANISM_SHARED_TYPE __attribute__((visibility("default")))
#endif
