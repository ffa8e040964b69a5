#pragma once

#include <KtArray.h>
#include <KtDbObjectIterator.h>
#include <KtDbSymbolTable.h>

/// A block definition: a named container of entities, placed by block references.
class KtDbBlockTableRecord : public KtDbSymbolTableRecord {
public:
    static KtRxClass* desc();
    KtRxClass* isA() const override;

    /// True for model space and every paper space.
    virtual bool isLayout() const = 0;
    /// True when the name begins with an asterisk and the record is not a layout.
    virtual bool isAnonymous() const = 0;
    /// True for the record that stands for an attached drawing.
    virtual bool isFromExternalReference() const = 0;
    /// The attached drawing; null when this record does not stand for one, or when the drawing is not loaded
    /// and `load` is false.
    virtual KtDbDatabase* externalDatabase(bool load = false) = 0;

    /// Appends the ids of the living references to this record: those that lie in whatever container
    /// (direct), or also those that place it through other blocks. `forceValidity` has the host bring its own
    /// lists up to date.
    virtual Orbx::ErrorStatus getBlockReferenceIds(KtArray<KtDbObjectId>& ids, bool directOnly = true,
                                                   bool forceValidity = true) const = 0;
    /// Appends the ids of the erased references to this record that can still be restored.
    virtual Orbx::ErrorStatus getErasedBlockReferenceIds(KtArray<KtDbObjectId>& ids) const = 0;
    /// The entities that lie in this record, in drawing order; erased ones are left out. The caller deletes
    /// it.
    virtual KtDbObjectIterator* entityIterator() const = 0;
};
