#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace bench {

struct TemplateEntry {
    std::wstring tag;
    bool selected = true;
};

struct TemplateBlock {
    std::wstring name;
    bool selected = true;
    std::vector<TemplateEntry> entries; ///< in the order in which they are stored
};

using TemplateContents = std::vector<TemplateBlock>;

/// Blocks of 100 attributes; each tag occurs in two of them. All is selected, so that everything has to be
/// listed.
TemplateContents manyBlocks(std::size_t entries);

/// One block; all tags are different, and selected.
TemplateContents oneBlock(std::size_t entries);

} // namespace bench
