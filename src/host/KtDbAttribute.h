#pragma once

#include <KtDbObject.h>

/// A tagged text that belongs to a block reference.
class KtDbAttribute : public KtDbObject {
public:
    static KtRxClass* desc();
    KtRxClass* isA() const override;

    /// Point at the attribute's own texts, which stay until they are changed or the attribute is released.
    virtual const wchar_t* tag() const = 0;
    virtual const wchar_t* text() const = 0;
};
