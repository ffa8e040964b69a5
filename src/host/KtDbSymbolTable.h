#pragma once

#include <KtDbObject.h>

/// Walks the records of a symbol table in table order. Whoever was given it deletes it, before the table is
/// closed.
class KtDbSymbolTableIterator {
public:
    KtDbSymbolTableIterator() = default;
    KtDbSymbolTableIterator(const KtDbSymbolTableIterator&) = delete;
    KtDbSymbolTableIterator& operator=(const KtDbSymbolTableIterator&) = delete;
    virtual ~KtDbSymbolTableIterator() = default;

    virtual void start(bool atBeginning = true, bool skipErased = true) = 0;
    virtual bool done() const = 0;
    /// eOutOfRange when done.
    virtual Orbx::ErrorStatus getRecordId(KtDbObjectId& id) const = 0;
    virtual void step(bool forward = true, bool skipErased = true) = 0;
};

/// Named records of one kind.
class KtDbSymbolTable : public KtDbObject {
public:
    static KtRxClass* desc();
    KtRxClass* isA() const override;

    /// Id of the record of that name; names are compared without regard to the case of ASCII letters.
    /// eKeyNotFound, or eWasErased when only an erased record has the name and `openErased` is false; `id` is
    /// then null.
    virtual Orbx::ErrorStatus getIdAt(const wchar_t* name, KtDbObjectId& id,
                                      bool openErased = false) const = 0;
};

class KtDbSymbolTableRecord : public KtDbObject {
public:
    static KtRxClass* desc();
    KtRxClass* isA() const override;

    /// `name` points at the record's own text, which stays until the record is renamed or released.
    virtual Orbx::ErrorStatus getName(const wchar_t*& name) const = 0;
    /// True for a record that came with an external reference.
    virtual bool isDependent() const = 0;
};
