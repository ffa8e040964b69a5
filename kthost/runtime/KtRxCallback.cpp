#include <KtRxCallback.h>

#include "kthost/audit/Trace.h"
#include "kthost/runtime/CallbackLedger.h"
#include "kthost/runtime/CodeOrigin.h"
#include "kthost/runtime/CodeText.h"
#include "kthost/runtime/ModuleCode.h"
#include "kthost/runtime/ModuleLoader.h"
#include "kthost/runtime/Report.h"

#include <string>

namespace {

using namespace kthost;

/// Traces the beginning and, however the callback returns, the end.
class CallbackTrace {
public:
    explicit CallbackTrace(const void* address) : address_(address) { write("begin"); }

    CallbackTrace(const CallbackTrace&) = delete;
    CallbackTrace& operator=(const CallbackTrace&) = delete;

    ~CallbackTrace() { write("end"); }

private:
    void write(const char* phase) const {
        if (tracing()) {
            TraceLine("callback").field("phase", phase).address("function", address_);
        }
    }

    const void* address_;
};

bool liesInUnloadedModule(const void* address) {
    const ModuleLoader* modules = ModuleLoader::current();
    const std::string* name = modules == nullptr ? nullptr : modules->unloadedModuleAt(address);
    if (name == nullptr) {
        return false;
    }
    report("a callback into " + codeText(address) + " was not made: " + *name + " has been unloaded");
    return true;
}

std::string_view nameOfModuleAt(const void* address) {
    const ModuleLoader* modules = ModuleLoader::current();
    const LoadedModule* module = modules == nullptr ? nullptr : modules->moduleAt(address);
    return module == nullptr ? std::string_view() : module->name();
}

} // namespace

void ktrxCall(KtRxCallback callback) {
    const void* address = addressOfFunction(callback);
    if (callback == nullptr || liesInUnloadedModule(address)) {
        return;
    }
    const CallbackTrace trace(address);
    const ModuleCodeScope scope(ModuleCodeKind::callback, nameOfModuleAt(address));
    callback();
}

void ktrxNoteCallback(KtApDocument* document, KtRxCallbackList list, KtRxCallback callback, bool held) {
    if (tracing()) {
        TraceLine(held ? "callback held" : "callback let go")
            .field("list", list == KtRxCallbackList::idleTimer ? "idle timer" : "block references")
            .address("function", addressOfFunction(callback));
    }
    if (CallbackLedger* ledger = CallbackLedger::current()) {
        ledger->note(document, list, callback, held);
    }
}

void ktrxForgetCallbacks(KtApDocument* document) {
    if (CallbackLedger* ledger = CallbackLedger::current()) {
        ledger->forget(document);
    }
}
