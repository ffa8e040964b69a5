#pragma once

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define KTDX_LEAK_CHECKED
#endif
#endif
#if defined(__SANITIZE_ADDRESS__)
#define KTDX_LEAK_CHECKED
#endif

#ifdef KTDX_LEAK_CHECKED
#include <sanitizer/lsan_interface.h>
#endif

/// Marks the place where an object is given up for good, so that a leak checker reports every other leak.
inline void leakOnPurpose([[maybe_unused]] const void* object) {
#ifdef KTDX_LEAK_CHECKED
    __lsan_ignore_object(object);
#endif
}
