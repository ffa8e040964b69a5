#include "TestModule.h"

#include <KtEd.h>

// Fails to initialise after it has registered a filter, and does not take that back.
TEST_MODULE_VERSION(KtRx::kApiVersion)

namespace {

bool passEverything(MSG* /*message*/) {
    return false;
}

} // namespace

TEST_MODULE_EXPORT std::int32_t ktrxEntryPoint(std::uint32_t message, void* /*applicationId*/) {
    if (message != KtRx::kInitialise) {
        return KtRx::kDone;
    }
    return ktedRegisterFilterWinMsg(&passEverything) ? KtRx::kError : KtRx::kDone;
}
