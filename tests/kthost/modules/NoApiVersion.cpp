#include "TestModule.h"

TEST_MODULE_EXPORT std::int32_t ktrxEntryPoint(std::uint32_t /*message*/, void* /*applicationId*/) {
    return KtRx::kDone;
}
