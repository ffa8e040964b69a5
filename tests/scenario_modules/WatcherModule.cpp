#include <ktdx/KtDxNotify.h>

#include <WatcherExport.h>

#include <KtApDocument.h>
#include <KtDbBlockTable.h>
#include <KtDbDatabase.h>
#include <KtEd.h>
#include <KtRxModule.h>

#include <cstdint>

namespace {

KtApDocument* watched = nullptr;

void changed() {
    ktedPrint(L"watcher called");
}

KtDbObjectId blockNamed(const KtDbDatabase& database, const wchar_t* name) {
    KtDbObjectId id;
    KtDbBlockTable* table = nullptr;
    if (ktdbOpenObject(table, database.blockTableId(), KtDb::kForRead) == Orbx::eOk) {
        static_cast<void>(table->getIdAt(name, id)); // the null id attaches to nothing
        static_cast<void>(table->close());
    }
    return id;
}

bool watch(KtApDocument* document, const KtArray<const wchar_t*>& words) {
    const KtArray<KtDbObjectId> ids{blockNamed(*document->database(), words[0])};
    watched = document;
    return ktdxBlockReferenceMonitorAttach(document, &ids, &changed);
}

} // namespace

// A second client: `watch BLOCK` has it called, and it says so. Built twice; one of the two never detaches.
extern "C" {

WATCHER_EXPORT std::int32_t ktrxEntryPoint(std::uint32_t message, void* /*applicationId*/) {
    if (message == KtRx::kInitialise) {
        ktedAddCommand(L"watch", L"watch BLOCK", &watch);
    } else if (message == KtRx::kUnload) {
        ktedRemoveCommand(L"watch");
        if (WATCHER_DETACHES != 0 && watched != nullptr) {
            ktdxBlockReferenceMonitorDetach(watched, &changed);
        }
    }
    return KtRx::kDone;
}

WATCHER_EXPORT std::uint32_t ktrxGetApiVersion(std::uint32_t /*hostVersion*/) {
    return KtRx::kApiVersion;
}

} // extern "C"
