#pragma once

#include "bench/literal/Blocks.h"
#include "bench/literal/Timer.h"

#include <KtApDocManagerReactor.h>
#include <KtApDocument.h>
#include <WindowSystem.h>

#include <map>
#include <memory>

namespace bench::literal {

/// What is kept of one document.
struct DocumentRecord {
    KtApDocument* document = nullptr;
    Timers timers; // outlives what joins it
    std::unique_ptr<Blocks> blocks;
    std::unique_ptr<ClientTimer> clients;
};

/// The documents' records, and what posts and handles idle checks. One at a time.
class Application final : public KtApDocManagerReactor {
public:
    /// Two in one process need messages of different names, else one takes the other's.
    explicit Application(const wchar_t* messageName = L"WM_KTDX_IDLE_CHECK");
    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;
    ~Application() override;

    bool attach(KtApDocument* document, const IdArray& ids, KtRxCallback callback);
    bool update(KtApDocument* document, bool force, bool notify);
    bool attachTimer(KtApDocument* document, KtRxCallback callback);
    bool appendTableRecords(KtApDocument* document, IdArray& ids);
    bool appendTables(KtApDocument* document, IdArray& ids);

    /// Made at the first question; null when it cannot be made.
    Blocks* blocksOf(KtApDocument* document);

    void documentLockModeChanged(KtApDocument* document, KtAp::DocLockMode previous,
                                 KtAp::DocLockMode current, KtAp::DocLockMode overall,
                                 const wchar_t* globalCommandName) override;
    void documentToBeDestroyed(KtApDocument* document) override;

private:
    static bool filter(MSG* message);
    static bool isIdle(KtApDocument* document);
    void check(KtApDocument* document);
    DocumentRecord* find(KtApDocument* document);
    DocumentRecord* findOrMake(KtApDocument* document);

    static Application* current;

    std::map<KtApDocument*, std::unique_ptr<DocumentRecord>> records_;
    const wchar_t* messageName_;
    UINT message_ = 0;
};

} // namespace bench::literal
