#pragma once

#include <KtRxObject.h>

class KtDbDatabase;

namespace KtAp {

enum DocLockMode : int {
    kNone = 0,
    kAutoWrite = 1,
    kNotLocked = 2,
    kWrite = 4,
    kRead = 20,
};

} // namespace KtAp

/// An open document of the host; the host owns it.
class KtApDocument : public KtRxObject {
public:
    static KtRxClass* desc();
    KtRxClass* isA() const override;

    /// Short name that people know the document by.
    virtual const wchar_t* name() const = 0;
    /// Null for a document that has no drawing.
    virtual KtDbDatabase* database() const = 0;
    /// True when no command, script or dialog of the document is under way.
    virtual bool isQuiescent() const = 0;
    /// Strongest lock in force; with `includeOtherContexts` false only locks of the calling execution context
    /// count.
    virtual KtAp::DocLockMode lockMode(bool includeOtherContexts = false) const = 0;
};
