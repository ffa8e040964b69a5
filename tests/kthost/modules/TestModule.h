#pragma once

#include <KtRxModule.h>

#include <cstdint>

/// Small modules for the host's own tests. Each defines its exports with this.
#ifdef _WIN32
#define TEST_MODULE_EXPORT extern "C" __declspec(dllexport)
#else
#define TEST_MODULE_EXPORT extern "C" __attribute__((visibility("default")))
#endif

/// Answers the interface-version query as a module built for this host does.
#define TEST_MODULE_VERSION(version)                                                                         \
    TEST_MODULE_EXPORT std::uint32_t ktrxGetApiVersion(std::uint32_t /*hostVersion*/) {                      \
        return version;                                                                                      \
    }
