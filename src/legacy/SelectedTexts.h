#pragma once

#include "legacy/TextTable.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

class ArchiveReader;
class KtDxStringList;

/// What a template selects, taken from its bytes without making its blocks: whoever only wants the lists has
/// no use for them.
class SelectedTexts {
public:
    /// Reads a whole template. Throws the kinds of TemplateFailure.h.
    explicit SelectedTexts(ArchiveReader& reader);

    /// Appends the names of the selected blocks and the tags that are selected in one of them, each once, as
    /// walking over the blocks comes upon them: whoever owns the lists may see in what order they are filled.
    void appendTo(KtDxStringList& names, KtDxStringList& tags) const;

private:
    struct Attribute {
        std::string_view tag;
        std::uint64_t hash;
        bool isSelected;
    };

    /// Attributes that are filed together, while their tags are in the reader's buffer, so that the memory
    /// that all of them need has been fetched.
    struct Batch {
        std::array<Attribute, 32> attributes{};
        std::size_t size = 0;
    };

    void readBlock(ArchiveReader& reader);
    void readAttributes(ArchiveReader& reader);
    void put(std::string_view tag, bool isSelected);
    void fileBatch();
    void file(const Attribute& attribute);

    // All texts are kept as little-endian UTF-16, which is half as much as wide characters can be.
    TextTable names_;
    std::vector<std::size_t> tagsBefore_; ///< of each name, how many tags are listed in front of it
    TextTable tags_;                      ///< of the selected blocks, selected or not
    std::vector<std::uint32_t> listed_;   ///< numbers of tags
    std::uint64_t block_ = 0;             ///< the one that is read, counted from 1
    Batch batch_;
};
