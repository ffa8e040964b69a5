#include "kthost/runtime/Dictionary.h"

#include "kthost/audit/Trace.h"
#include "kthost/runtime/CodeOrigin.h"
#include "kthost/runtime/ModuleLoader.h"
#include "kthost/runtime/RuntimeClass.h"

#include <memory>
#include <string>
#include <utility>

KTHOST_RUNTIME_CLASS(KtRxDictionary, KtRxObject)

namespace kthost {

namespace {

std::string nameOfRunningModule() {
    const ModuleLoader* modules = ModuleLoader::current();
    const LoadedModule* running = modules == nullptr ? nullptr : modules->running();
    return running == nullptr ? std::string() : running->name();
}

void traceEntry(const char* event, const wchar_t* key, const KtRxObject* object) {
    if (tracing()) {
        TraceLine(event)
            .field("key", key)
            .field("class", object == nullptr ? nullptr : object->isA()->name());
    }
}

} // namespace

Dictionary::~Dictionary() {
    const ModuleLoader* modules = ModuleLoader::current();
    for (auto& [key, entry] : entries_) {
        if (modules != nullptr && modules->unloadedModuleAt(entry.code) != nullptr) {
            // Its destructor has gone with its module; the memory is all that can be lost.
            static_cast<void>(entry.object.release());
        }
    }
}

KtRxObject* Dictionary::at(const wchar_t* key) const {
    if (key == nullptr) {
        return nullptr;
    }
    const auto entry = entries_.find(key);
    return entry == entries_.end() ? nullptr : entry->second.object.get();
}

bool Dictionary::add(const wchar_t* key, KtRxObject* object) {
    if (key == nullptr || object == nullptr || entries_.contains(key)) {
        return false;
    }
    traceEntry("dictionary add", key, object);
    std::string broughtBy = nameOfRunningModule(); // whatever can throw comes before the object is taken
    Entry& entry = entries_[key];
    entry = {std::unique_ptr<KtRxObject>(object), virtualTableOf(object), std::move(broughtBy)};
    return true;
}

KtRxObject* Dictionary::remove(const wchar_t* key) {
    const auto entry = key == nullptr ? entries_.end() : entries_.find(key);
    if (entry == entries_.end()) {
        return nullptr;
    }
    traceEntry("dictionary remove", key, entry->second.object.get());
    KtRxObject* removed = entry->second.object.release();
    entries_.erase(entry);
    return removed;
}

} // namespace kthost
