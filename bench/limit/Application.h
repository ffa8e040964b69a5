#pragma once

#include "bench/limit/Calls.h"

#include <KtApDocManagerReactor.h>
#include <KtApDocument.h>
#include <KtRxCallback.h>
#include <WindowSystem.h>

#include <vector>

namespace bench::limit {

/// What posts and handles the idle checks of one document. One at a time.
class Application final : public KtApDocManagerReactor {
public:
    explicit Application(KtApDocument& document);
    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;
    ~Application() override;

    Calls& calls() { return calls_; }

    void attach(KtRxCallback callback);
    void update(bool notify);

    /// In ascending order of address.
    void setTimerCallbacks(std::vector<KtRxCallback> callbacks) { timerCallbacks_ = std::move(callbacks); }

    /// What the queries for tables ask.
    void askForTables(KtArray<KtDbObjectId>& records, KtArray<KtDbObjectId>& tables) const;

    void documentLockModeChanged(KtApDocument* document, KtAp::DocLockMode previous,
                                 KtAp::DocLockMode current, KtAp::DocLockMode overall,
                                 const wchar_t* globalCommandName) override;

private:
    static bool filter(MSG* message);
    bool isIdle() const;
    void check();

    static Application* current;

    KtApDocument& document_;
    Calls calls_;
    KtRxCallback callback_ = nullptr;
    std::vector<KtRxCallback> timerCallbacks_;
    UINT message_ = 0;
};

} // namespace bench::limit
