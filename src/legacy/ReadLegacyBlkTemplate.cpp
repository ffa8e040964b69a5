#include "legacy/CEattMain.h"
#include "legacy/TagHash.h"

#include <ktdx/KtDxNotify.h>

#include <new>
#include <string_view>
#include <unordered_set>

namespace {

/// Appends to a client's list what is not in it yet. The texts seen stay with their template, which outlives
/// this.
class DistinctList {
public:
    DistinctList(KtDxStringList& list, std::size_t most) : list_(&list) { seen_.reserve(most); }

    void add(std::wstring_view text) {
        if (seen_.insert(text).second) {
            list_->addTail(text.data(), text.size());
        }
    }

private:
    KtDxStringList* list_;
    std::unordered_set<std::wstring_view, TagHash> seen_;
};

std::size_t countAttributes(const CEattBlockArray& blocks) {
    std::size_t count = 0;
    for (const auto& block : blocks) {
        count += block->m_mapAttributes.size();
    }
    return count;
}

void listSelected(const CEattMain& source, KtDxStringList& blockNames, KtDxStringList& attributeTags) {
    DistinctList names(blockNames, source.m_arrBlocks.size());
    DistinctList tags(attributeTags, countAttributes(source.m_arrBlocks));
    for (const auto& block : source.m_arrBlocks) {
        if (!block->m_bSelected) {
            continue;
        }
        names.add(block->m_strBlockName);
        // Reading has kept the selected attributes only.
        for (const auto& [tag, entry] : block->m_mapAttributes) {
            tags.add(tag);
        }
    }
}

void listTemplate(const wchar_t* path, KtDxStringList& blockNames, KtDxStringList& attributeTags) {
    CEattMain source;
    if (path != nullptr) {
        source.m_strTemplatePath = path;
    }
    if (source.ReadTemplateFile()) {
        listSelected(source, blockNames, attributeTags);
    }
}

void emptyList(KtDxStringList* list) {
    if (list != nullptr) {
        list->removeAll();
    }
}

} // namespace

void ktdxReadLegacyBlkTemplate(const wchar_t* templatePath, KtDxStringList* blockNames,
                               KtDxStringList* attributeTags) {
    emptyList(blockNames);
    emptyList(attributeTags);
    if (blockNames == nullptr || attributeTags == nullptr) {
        return;
    }
    try {
        listTemplate(templatePath, *blockNames, *attributeTags);
    } catch (const std::bad_alloc&) {
        blockNames->removeAll();
        attributeTags->removeAll();
    }
}
