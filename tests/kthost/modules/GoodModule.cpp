#include "TestModule.h"

#include <cstddef>
#include <vector>

namespace {

// What the host has said so far. It stands in the module's own data, so a module that is loaded anew starts
// with none.
std::vector<std::uint32_t> messages;
void* applicationIdOfInitialise = nullptr;

} // namespace

TEST_MODULE_VERSION(KtRx::kApiVersion)

TEST_MODULE_EXPORT std::int32_t ktrxEntryPoint(std::uint32_t message, void* applicationId) {
    messages.push_back(message);
    if (message == KtRx::kInitialise) {
        applicationIdOfInitialise = applicationId;
        ktrxRegisterAppMDIAware(applicationId);
    }
    return message == 1000 ? 42 : KtRx::kDone;
}

TEST_MODULE_EXPORT std::size_t goodMessageCount() {
    return messages.size();
}

TEST_MODULE_EXPORT std::uint32_t goodMessageAt(std::size_t index) {
    return messages[index];
}

TEST_MODULE_EXPORT void* goodApplicationId() {
    return applicationIdOfInitialise;
}
