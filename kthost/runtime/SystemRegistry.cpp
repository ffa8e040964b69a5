#include "kthost/runtime/SystemRegistry.h"

#include <memory>
#include <tuple>

namespace kthost {

namespace {

SystemRegistry* currentRegistry = nullptr;

} // namespace

SystemRegistry::SystemRegistry() {
    auto services = std::make_unique<Dictionary>();
    if (root_.add(kServiceDictionaryKey, services.get())) {
        std::ignore = services.release(); // the root's now
    }
    currentRegistry = this;
}

SystemRegistry::~SystemRegistry() {
    currentRegistry = nullptr;
}

SystemRegistry* SystemRegistry::current() {
    return currentRegistry;
}

Dictionary* SystemRegistry::services() {
    return dynamic_cast<Dictionary*>(root_.at(kServiceDictionaryKey));
}

} // namespace kthost

KtRxDictionary* ktrxSysRegistry() {
    kthost::SystemRegistry* registry = kthost::SystemRegistry::current();
    return registry == nullptr ? nullptr : &registry->root();
}
