#pragma once

#include <KtDbBlockRepresentation.h>

namespace kthost {

class BlockRepresentation final : public KtDbBlockRepresentation {
public:
    KtDbObjectId originalBlockTableRecord(const KtDbBlockReference* reference) const override;
    /// eInvalidBlockId for what is not a record that is still there.
    Orbx::ErrorStatus getRepresentations(KtDbObjectId definition, KtArray<KtDbObjectId>& ids) const override;
};

/// Makes it the extension of block references.
void registerBlockRepresentation();

} // namespace kthost
