#pragma once

#include <KtDbSymbolTable.h>

using KtDbBlockTableIterator = KtDbSymbolTableIterator;

/// The block definitions of a drawing, its layouts among them.
class KtDbBlockTable : public KtDbSymbolTable {
public:
    static KtRxClass* desc();
    KtRxClass* isA() const override;

    /// The caller deletes the iterator while the table is still open; null on failure.
    virtual Orbx::ErrorStatus newIterator(KtDbBlockTableIterator*& iterator, bool atBeginning = true,
                                          bool skipErased = true) const = 0;
};
