#include "kthost/runtime/SystemRegistry.h"

namespace kthost {

namespace {

SystemRegistry* currentRegistry = nullptr;

} // namespace

SystemRegistry::SystemRegistry() {
    root_.add(kServiceDictionaryKey, new Dictionary);
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
