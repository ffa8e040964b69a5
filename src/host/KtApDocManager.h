#pragma once

#include <KtApDocument.h>

class KtApDocManagerReactor;

/// Walks the open documents in the order in which they were opened. Whoever was given it deletes it.
class KtApDocumentIterator {
public:
    KtApDocumentIterator() = default;
    KtApDocumentIterator(const KtApDocumentIterator&) = delete;
    KtApDocumentIterator& operator=(const KtApDocumentIterator&) = delete;
    virtual ~KtApDocumentIterator() = default;

    virtual bool done() const = 0;
    virtual void step() = 0;
    /// Null when done.
    virtual KtApDocument* document() const = 0;
};

class KtApDocManager : public KtRxObject {
public:
    static KtRxClass* desc();
    KtRxClass* isA() const override;

    /// Null when no document is open.
    virtual KtApDocument* curDocument() const = 0;
    /// The caller deletes it; null when the host cannot make one.
    virtual KtApDocumentIterator* newDocumentIterator() = 0;
    /// A reactor is held once and never owned.
    virtual void addReactor(KtApDocManagerReactor* reactor) = 0;
    virtual void removeReactor(KtApDocManagerReactor* reactor) = 0;
    /// Number of inputs waiting to be taken by the document's commands.
    virtual int pendingInputCount(KtApDocument* document) const = 0;
};

/// Null before the host has its document manager and after it is gone.
KtApDocManager* ktDocManagerPtr();
