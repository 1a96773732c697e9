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
