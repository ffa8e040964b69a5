#pragma once

#include "kthost/documents/Document.h"

#include <KtApDocManagerReactor.h>

#include <utility>

namespace histories {

/// Hears for which documents a command ended while they were current: those for which an idle check is due.
class IdleChecks : public KtApDocManagerReactor {
public:
    IdleChecks();
    IdleChecks(const IdleChecks&) = delete;
    IdleChecks& operator=(const IdleChecks&) = delete;
    ~IdleChecks() override;

    /// The current document, if one was due for it since the last question and nothing keeps the host from
    /// it; otherwise null.
    kthost::Document* takeDone();

    void documentLockModeChanged(KtApDocument* document, KtAp::DocLockMode previous,
                                 KtAp::DocLockMode current, KtAp::DocLockMode overall,
                                 const wchar_t* globalCommandName) override;
    void documentToBeDestroyed(KtApDocument* document) override;

private:
    KtApDocument* due_ = nullptr;
};

} // namespace histories
