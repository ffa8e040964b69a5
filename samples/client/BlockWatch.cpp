#include <ktdx/KtDxNotify.h>

#include <KtApDocManager.h>
#include <KtApDocManagerReactor.h>
#include <KtDbBlockTable.h>
#include <KtDbDatabase.h>
#include <KtEd.h>
#include <KtRxModule.h>

#include <cstdint>
#include <memory>
#include <set>

// A client of KtDxNotify to begin one's own with: `watch BLOCK` has it called when references of that block,
// or their attributes, have changed, and it says so.
namespace {

void referencesChanged() {
    ktedPrint(L"watch: a reference has changed");
}

/// The documents in which something is watched. A document that goes is heard of, since nothing may be
/// detached from it afterwards.
class WatchedDocuments : public KtApDocManagerReactor {
public:
    WatchedDocuments() { ktDocManagerPtr()->addReactor(this); }

    WatchedDocuments(const WatchedDocuments&) = delete;
    WatchedDocuments& operator=(const WatchedDocuments&) = delete;

    ~WatchedDocuments() override {
        ktDocManagerPtr()->removeReactor(this);
        for (KtApDocument* document : documents_) {
            ktdxBlockReferenceMonitorDetach(document, &referencesChanged);
        }
    }

    bool watch(KtApDocument* document, KtDbObjectId definition) {
        const KtArray<KtDbObjectId> definitions{definition};
        documents_.insert(document);
        return ktdxBlockReferenceMonitorAttach(document, &definitions, &referencesChanged);
    }

    void documentToBeDestroyed(KtApDocument* document) override {
        if (documents_.erase(document) != 0) {
            ktdxBlockReferenceMonitorDetach(document, &referencesChanged);
        }
    }

private:
    std::set<KtApDocument*> documents_;
};

/// From the module's loading to its unloading.
std::unique_ptr<WatchedDocuments> watchedDocuments;

/// The null id when there is no such block.
KtDbObjectId blockNamed(const KtApDocument& document, const wchar_t* name) {
    KtDbObjectId id;
    KtDbBlockTable* table = nullptr;
    if (ktdbOpenObject(table, document.database()->blockTableId(), KtDb::kForRead) == Orbx::eOk) {
        static_cast<void>(table->getIdAt(name, id)); // leaves the id null where there is none
        static_cast<void>(table->close());
    }
    return id;
}

bool runWatch(KtApDocument* document, const KtArray<const wchar_t*>& words) {
    if (words.length() != 1) {
        ktedFail(L"watch takes the name of a block");
        return false;
    }
    const KtDbObjectId definition = blockNamed(*document, words[0]);
    if (definition.isNull()) {
        ktedFail(L"there is no such block");
        return false;
    }
    return watchedDocuments->watch(document, definition);
}

std::int32_t initialise(void* applicationId) {
    if (!ktedAddCommand(L"watch", L"watch BLOCK", &runWatch)) {
        return KtRx::kError;
    }
    ktrxRegisterAppMDIAware(applicationId);
    watchedDocuments = std::make_unique<WatchedDocuments>();
    return KtRx::kDone;
}

} // namespace

extern "C" {

std::int32_t ktrxEntryPoint(std::uint32_t message, void* applicationId) {
    if (message == KtRx::kInitialise) {
        return initialise(applicationId);
    }
    if (message == KtRx::kUnload) {
        ktedRemoveCommand(L"watch");
        watchedDocuments.reset();
    }
    return KtRx::kDone;
}

std::uint32_t ktrxGetApiVersion(std::uint32_t /*hostVersion*/) {
    return KtRx::kApiVersion;
}

} // extern "C"
