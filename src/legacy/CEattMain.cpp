#include "legacy/CEattMain.h"

#include "legacy/ArchiveReader.h"
#include "legacy/ArchiveWriter.h"
#include "legacy/CArchive.h"
#include "legacy/FileSource.h"
#include "legacy/TemplateFailure.h"
#include "legacy/TemplateStream.h"

#include <algorithm>
#include <iterator>
#include <new>
#include <utility>

namespace {

/// Hands the selected entries of one map to another: the records themselves, not copies.
void takeSelected(AttributeMap& from, AttributeMap& to) {
    to.reserve(static_cast<std::size_t>(
        std::count_if(from.begin(), from.end(), [](const auto& item) { return item.entry->m_bSelected; })));
    for (auto& [tag, entry] : from) {
        if (entry->m_bSelected) {
            to.add(std::move(tag), std::move(entry));
        }
    }
}

/// The block as the template keeps it; the loaded one is of no use afterwards.
std::unique_ptr<CEattBlockInfo> keptBlock(CEattBlockInfo& loaded) {
    auto block = std::make_unique<CEattBlockInfo>();
    block->m_strBlockName = std::move(loaded.m_strBlockName);
    ++block->m_nUseCount;
    ++block->m_nRefCount;
    block->m_bSelected = loaded.m_bSelected;
    takeSelected(loaded.m_mapAttributes, block->m_mapAttributes);
    return block;
}

} // namespace

void CEattMain::Serialize(CArchive& archive) {
    if (archive.IsStoring()) {
        archive.writer().writeInt32(m_nVersion);
    } else {
        m_nVersion = archive.reader().readInt32();
    }
}

void CEattMain::readTemplateFile() {
    FileSource file(templatePath(m_strTemplatePath));
    ArchiveReader reader(file);
    CEattBlockArray blocks = loadTemplate(reader, *this);
    for (auto& block : blocks) {
        // Each loaded block goes as soon as it has been emptied, so that the two never take up memory
        // together.
        block = keptBlock(*block);
    }
    m_arrBlocks.reserve(m_arrBlocks.size() + blocks.size());
    std::move(blocks.begin(), blocks.end(), std::back_inserter(m_arrBlocks));
}

bool CEattMain::ReadTemplateFile() {
    if (m_strTemplatePath.empty()) {
        return false;
    }
    try {
        readTemplateFile();
        return true;
    } catch (const ArchiveFailure&) {
        return false;
    } catch (const FileFailure&) {
        return false;
    } catch (const std::bad_alloc&) {
        return false;
    }
}
