#pragma once

#include <KtRxObject.h>

/// Record of one run-time class: its name, its parent and the protocol extensions registered for it.
class KtRxClass : public KtRxObject {
public:
    static KtRxClass* desc();
    KtRxClass* isA() const override;

    virtual const wchar_t* name() const = 0;
    /// Null for the root.
    virtual KtRxClass* parent() const = 0;
    /// True for the class itself too.
    virtual bool isDerivedFrom(const KtRxClass* ancestor) const = 0;
    /// Extension for objects of the class that this record describes, looked for along its parents; null when
    /// there is none. It answers for the described class, not for the record as an object.
    virtual KtRxObject* queryX(const KtRxClass* protocol) const = 0;
    /// Registers an extension (not owned) in place of the one before it, which is returned.
    virtual KtRxObject* addX(const KtRxClass* protocol, KtRxObject* extension) = 0;
    /// Withdraws and returns the extension registered for this very class.
    virtual KtRxObject* removeX(const KtRxClass* protocol) = 0;
};
