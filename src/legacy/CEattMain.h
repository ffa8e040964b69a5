#pragma once

#include "legacy/CEattBlockInfo.h"
#include "legacy/CObject.h"

#include <cstdint>
#include <string>
#include <vector>

/// A template: the block definitions whose attributes are to be extracted. Owns the blocks of its arrays.
class CEattMain : public CObject {
public:
    /// Stores or loads m_nVersion, and nothing else.
    void Serialize(CArchive& archive) override;

    /// Reads the file m_strTemplatePath and appends its blocks to m_arrBlocks, each with its selected
    /// attributes only. False, and m_arrBlocks is unchanged, when there is no path, the file cannot be opened
    /// while nobody else has it open, it is no template, or memory runs out.
    bool ReadTemplateFile();

    CEattBlockArray m_arrBlocks;
    CEattBlockArray m_arrSecondBlocks; ///< never filled by this module
    CEattBlockArray m_arrThirdBlocks;  ///< never filled by this module
    std::vector<void*> m_arrPointers;  ///< never filled by this module
    std::int32_t m_nVersion = 1;       ///< kept as it is read; nothing depends on it
    std::wstring m_strTemplatePath;

private:
    void readTemplateFile();
};
