#pragma once

#include "legacy/AttributeMap.h"
#include "legacy/CEattAttributeInfo.h"
#include "legacy/CObject.h"

#include <KtGe.h>

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

class ArchiveReader;
class ArchiveWriter;

/// One block definition of a template: its name, whether it is to be extracted, and its attributes. Owns what
/// its array and its map hold.
class CEattBlockInfo : public CObject {
public:
    static const CRuntimeClass kClass;

    const CRuntimeClass* GetRuntimeClass() const override;
    /// Stores or loads name, flag and attribute entries. Stored attributes are sorted by tag as `CEattUtil`
    /// sorts; of entries with the same tag the first one loaded stands. Loading throws ArchiveFailure.
    void Serialize(CArchive& archive) override;

    CEattAttributeArray m_arrAttributes; ///< never filled by this module
    AttributeMap m_mapAttributes;
    std::wstring m_strBlockName;
    std::wstring m_strSecond;
    std::int32_t m_nUseCount = 0;
    bool m_bSelected = true;
    // From here on only initialised and never stored, except that m_nRefCount is counted.
    std::int64_t m_nUnused = 0;
    std::wstring m_strThird;
    KtGePoint3d m_ptDefault;
    KtGeScale3d m_scaleDefault;
    std::array<std::int64_t, 4> m_arrUnused{};
    std::wstring m_strFourth;
    std::int32_t m_nRefCount = 0;

private:
    void store(ArchiveWriter& writer) const;
    void load(ArchiveReader& reader);
    void loadAttribute(ArchiveReader& reader);
};

using CEattBlockArray = std::vector<std::unique_ptr<CEattBlockInfo>>;
