#pragma once

class KtRxClass;

/// Root of the host's run-time typed objects. Each has a class record that names it and knows its parent.
class KtRxObject {
public:
    KtRxObject(const KtRxObject&) = delete;
    KtRxObject& operator=(const KtRxObject&) = delete;
    virtual ~KtRxObject();

    /// Class record of this class; it lives as long as the process.
    static KtRxClass* desc();
    /// Class record of the object's own class.
    virtual KtRxClass* isA() const;
    bool isKindOf(const KtRxClass* ancestor) const;
    /// Protocol extension of that class which is registered for the object's class or for its nearest
    /// ancestor that has one; null when there is none. The class that registered it owns it.
    KtRxObject* queryX(const KtRxClass* protocol) const;

protected:
    KtRxObject();
};
