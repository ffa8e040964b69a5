#pragma once

#include <KtApDocument.h>

/// Hears what happens to documents. Every default does nothing. Reactors may come and go inside a
/// notification.
class KtApDocManagerReactor : public KtRxObject {
public:
    static KtRxClass* desc();
    KtRxClass* isA() const override;
    KtApDocManagerReactor();
    ~KtApDocManagerReactor() override;

    virtual void documentCreated(KtApDocument* document);
    virtual void documentToBeDestroyed(KtApDocument* document);
    /// The document, announced or not, was not created after all; it goes away next.
    virtual void documentCreateCancelled(KtApDocument* document);
    virtual void documentLockModeWillChange(KtApDocument* document, KtAp::DocLockMode previous,
                                            KtAp::DocLockMode current, KtAp::DocLockMode overall,
                                            const wchar_t* globalCommandName);
    /// `globalCommandName` is the name of the command that took the lock, with "#" before it when the lock is
    /// given back because the command has ended, however it ended.
    virtual void documentLockModeChanged(KtApDocument* document, KtAp::DocLockMode previous,
                                         KtAp::DocLockMode current, KtAp::DocLockMode overall,
                                         const wchar_t* globalCommandName);
    /// Null when no document is current any more.
    virtual void documentBecameCurrent(KtApDocument* document);
    virtual void documentDestroyed(const wchar_t* name);
};
