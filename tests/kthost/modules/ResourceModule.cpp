#include "TestModule.h"

#include <KtUtResource.h>

namespace {

const wchar_t* nameToLoad = L"TestResource.dll";
HMODULE loaded = nullptr;

constexpr std::uint32_t kLoadAgain = 2000;

} // namespace

TEST_MODULE_VERSION(KtRx::kApiVersion)

// Loads its resource library on initialise, and again whenever it is asked to.
TEST_MODULE_EXPORT std::int32_t ktrxEntryPoint(std::uint32_t message, void* /*applicationId*/) {
    if (message == KtRx::kInitialise || message == kLoadAgain) {
        loaded = KtUtResource::loadDll(nameToLoad, 0, 0);
    }
    return KtRx::kDone;
}

TEST_MODULE_EXPORT void resourceModuleSetName(const wchar_t* name) {
    nameToLoad = name;
}

TEST_MODULE_EXPORT HMODULE resourceModuleLoaded() {
    return loaded;
}
