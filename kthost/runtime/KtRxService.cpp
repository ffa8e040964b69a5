#include <KtRxService.h>

#include "kthost/runtime/RuntimeClass.h"
#include "kthost/runtime/SystemRegistry.h"

#include <memory>

KTHOST_RUNTIME_CLASS(KtRxService, KtRxObject)

KtRxService::KtRxService() = default;
KtRxService::~KtRxService() = default;

namespace {

kthost::Dictionary* services() {
    kthost::SystemRegistry* registry = kthost::SystemRegistry::current();
    return registry == nullptr ? nullptr : registry->services();
}

} // namespace

bool ktrxServiceIsRegistered(const wchar_t* name) {
    const kthost::Dictionary* dictionary = services();
    return dictionary != nullptr && dictionary->at(name) != nullptr;
}

bool ktrxRegisterService(const wchar_t* name) {
    kthost::Dictionary* dictionary = services();
    if (dictionary == nullptr) {
        return false;
    }
    auto service = std::make_unique<KtRxService>();
    const bool added = dictionary->add(name, service.get());
    if (added) {
        static_cast<void>(service.release()); // the dictionary's now
    }
    return added;
}
