#pragma once

#include <KtDbObject.h>
#include <KtDbObjectIterator.h>
#include <KtGe.h>

/// One placement of a block definition in a container (its owner).
class KtDbBlockReference : public KtDbObject {
public:
    static KtRxClass* desc();
    KtRxClass* isA() const override;

    virtual KtDbObjectId blockTableRecord() const = 0;
    virtual KtGePoint3d position() const = 0;
    /// Attributes in the order in which they were appended, erased ones included. The caller deletes it; null
    /// when the reference has none.
    virtual KtDbObjectIterator* attributeIterator() const = 0;
};
