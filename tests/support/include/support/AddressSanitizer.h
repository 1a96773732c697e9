#pragma once

// Defines UNDER_ADDRESS_SANITIZER in builds with that sanitizer, which ends the process where an allocation
// fails instead of throwing std::bad_alloc.
#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define UNDER_ADDRESS_SANITIZER
#endif
#elif defined(__SANITIZE_ADDRESS__)
#define UNDER_ADDRESS_SANITIZER
#endif
