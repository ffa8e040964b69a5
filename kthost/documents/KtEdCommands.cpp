#include <KtEd.h>

#include "kthost/audit/Trace.h"
#include "kthost/documents/CommandRegistry.h"
#include "kthost/documents/DocumentManager.h"
#include "kthost/documents/PrintSink.h"
#include "kthost/runtime/Utf8.h"

using namespace kthost;

bool ktedCommandActive() {
    const DocumentManager* documents = DocumentManager::current();
    return documents != nullptr && documents->isCommandActive();
}

bool ktedAddCommand(const wchar_t* name, const wchar_t* usage, KtEdCommandFunction function) {
    CommandRegistry* commands = CommandRegistry::current();
    return commands != nullptr && commands->add(name, usage, function);
}

bool ktedRemoveCommand(const wchar_t* name) {
    CommandRegistry* commands = CommandRegistry::current();
    return commands != nullptr && name != nullptr && commands->remove(name);
}

void ktedFail(const wchar_t* reason) {
    DocumentManager* documents = DocumentManager::current();
    if (documents != nullptr && reason != nullptr) {
        documents->failCommand(toUtf8(reason));
    }
}

void ktedPrint(const wchar_t* line) {
    if (tracing()) {
        TraceLine("print").field("line", line);
    }
    printLine(line == nullptr ? L"" : line);
}
