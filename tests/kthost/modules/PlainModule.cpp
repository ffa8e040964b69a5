#include "TestModule.h"

// Built several times: for other interface versions and with other answers to initialise.
TEST_MODULE_VERSION(TEST_MODULE_API_VERSION)

TEST_MODULE_EXPORT std::int32_t ktrxEntryPoint(std::uint32_t message, void* /*applicationId*/) {
    return message == KtRx::kInitialise ? TEST_MODULE_ANSWER : KtRx::kDone;
}
