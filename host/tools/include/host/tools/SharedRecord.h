#pragma once

/// Marks a record that both sides of the border give members to: the host declares it, and the members that
/// the mechanism library defines must leave that library, which hides what it does not export.
#if defined(_WIN32)
#if defined(mechanism_EXPORTS)
#define MECHANISM_SHARED_RECORD __declspec(dllexport)
#else
#define MECHANISM_SHARED_RECORD __declspec(dllimport)
#endif
#else
#define MECHANISM_SHARED_RECORD __attribute__((visibility("default")))
#endif

/// Marks such a record itself where it has virtual members: its run-time type is one for all libraries. On
/// Windows the members' marks are enough.
#if defined(_WIN32)
#define MECHANISM_SHARED_TYPE
#else
#define MECHANISM_SHARED_TYPE __attribute__((visibility("default")))
#endif
