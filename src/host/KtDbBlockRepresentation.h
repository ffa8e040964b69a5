#pragma once

#include <KtArray.h>
#include <KtDbObjectId.h>
#include <KtRxObject.h>
#include <OrbxErrorStatus.h>

class KtDbBlockReference;

/// Protocol extension of block references: ties the anonymous records that represent a dynamic block
/// definition to that definition. Found with `queryX`; owned by the host.
class KtDbBlockRepresentation : public KtRxObject {
public:
    static KtRxClass* desc();
    KtRxClass* isA() const override;

    /// The dynamic definition that the reference's record represents; the null id when it represents none.
    virtual KtDbObjectId originalBlockTableRecord(const KtDbBlockReference* reference) const = 0;
    /// Appends the living representations of a dynamic definition, in the order in which they were made.
    virtual Orbx::ErrorStatus getRepresentations(KtDbObjectId definition,
                                                 KtArray<KtDbObjectId>& ids) const = 0;
};
