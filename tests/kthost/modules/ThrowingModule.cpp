#include "TestModule.h"

#include <stdexcept>

TEST_MODULE_VERSION(KtRx::kApiVersion)

TEST_MODULE_EXPORT std::int32_t ktrxEntryPoint(std::uint32_t /*message*/, void* /*applicationId*/) {
    throw std::runtime_error("the disk is full");
}
