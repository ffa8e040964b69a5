#include "bench/templates/LiteralTemplate.h"

#include "bench/drawings/Require.h"

#include <UserLocale.h>

#include <cstdint>
#include <fstream>
#include <locale>
#include <set>
#include <sstream>
#include <string_view>

namespace bench::literal {

namespace {

constexpr std::string_view kClassName = "CEattBlockInfo";
constexpr std::uint64_t kNewClass = 0xFFFF;
constexpr std::uint64_t kFirstClass = 0x8001;
constexpr std::uint64_t kSchema = 1;
constexpr std::uint64_t kWide = 0xFFFEFF; // two fields
constexpr std::uint64_t kLong = 0xFF;

void write(std::ostream& out, std::uint64_t value, std::size_t width) {
    for (std::size_t i = 0; i < width; ++i) {
        out.put(static_cast<char>(static_cast<unsigned char>(value >> (8 * i))));
    }
}

void write(std::ostream& out, const std::wstring& text) {
    require(text.size() < kLong, "the texts are short");
    write(out, kWide, 3);
    write(out, text.size(), 1);
    for (const wchar_t character : text) {
        write(out, static_cast<std::uint64_t>(character), 2);
    }
}

std::uint64_t readNumber(std::istream& in, std::size_t width) {
    std::uint64_t value = 0;
    for (std::size_t i = 0; i < width; ++i) {
        const int byte = in.get();
        require(byte != std::istream::traits_type::eof(), "the file is whole");
        value |= static_cast<std::uint64_t>(byte) << (8 * i);
    }
    return value;
}

std::wstring readText(std::istream& in) {
    require(readNumber(in, 3) == kWide, "the texts are wide");
    const std::uint64_t length = readNumber(in, 1);
    require(length < kLong, "the texts are short");
    std::wstring text;
    for (std::uint64_t i = 0; i < length; ++i) {
        text.push_back(static_cast<wchar_t>(readNumber(in, 2)));
    }
    return text;
}

void write(std::ostream& out, const BlockEntry& block) {
    write(out, block.name);
    write(out, block.selected ? 1 : 0, 1);
    write(out, block.attributes.size(), 4);
    std::vector<std::wstring> tags;
    for (const auto& [tag, entry] : block.attributes) {
        tags.push_back(tag);
    }
    sortTags(tags);
    for (const std::wstring& tag : tags) {
        write(out, tag);
        write(out, block.attributes.at(tag)->selected ? 1 : 0, 1);
    }
}

void readClass(std::istream& in) {
    const std::uint64_t tag = readNumber(in, 2);
    if (tag != kNewClass) {
        require(tag == kFirstClass, "there is one class");
        return;
    }
    require(readNumber(in, 2) == kSchema, "the schema is known");
    require(readNumber(in, 2) == kClassName.size(), "the class is known");
    for (const char character : kClassName) {
        require(in.get() == character, "the class is known");
    }
}

std::unique_ptr<BlockEntry> readBlock(std::istream& in) {
    readClass(in);
    auto block = std::make_unique<BlockEntry>();
    block->name = readText(in);
    block->selected = readNumber(in, 1) != 0;
    const std::uint64_t count = readNumber(in, 4);
    for (std::uint64_t i = 0; i < count; ++i) {
        const std::wstring tag = readText(in);
        const bool selected = readNumber(in, 1) != 0;
        if (block->attributes.find(tag) == block->attributes.end()) {
            block->attributes[tag] = std::make_unique<AttributeEntry>();
            block->attributes[tag]->selected = selected;
        }
    }
    return block;
}

Template readTemplate(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    readNumber(in, 4);
    const std::uint64_t count = readNumber(in, 2);
    Template loaded;
    for (std::uint64_t i = 0; i < count; ++i) {
        loaded.push_back(readBlock(in));
    }
    return loaded;
}

/// With their selected attributes only.
Template kept(const Template& loaded) {
    Template blocks;
    for (const auto& block : loaded) {
        auto fresh = std::make_unique<BlockEntry>();
        fresh->name = block->name;
        fresh->selected = block->selected;
        for (auto& [tag, entry] : block->attributes) {
            if (entry->selected) {
                fresh->attributes[tag] = std::move(entry);
            }
        }
        blocks.push_back(std::move(fresh));
    }
    return blocks;
}

void addOnce(const std::wstring& text, std::set<std::wstring>& listed, std::list<std::wstring>& list) {
    if (listed.insert(text).second) {
        list.push_back(text);
    }
}

} // namespace

Template makeTemplate(const TemplateContents& contents) {
    Template made;
    for (const TemplateBlock& block : contents) {
        auto fresh = std::make_unique<BlockEntry>();
        fresh->name = block.name;
        fresh->selected = block.selected;
        for (const TemplateEntry& entry : block.entries) {
            auto& filed = fresh->attributes[entry.tag];
            filed = std::make_unique<AttributeEntry>();
            filed->selected = entry.selected;
        }
        made.push_back(std::move(fresh));
    }
    return made;
}

std::string writeTemplate(const Template& source) {
    std::ostringstream out;
    write(out, 1, 4);
    write(out, source.size(), 2);
    bool isFirst = true;
    for (const auto& block : source) {
        if (isFirst) {
            write(out, kNewClass, 2);
            write(out, kSchema, 2);
            write(out, kClassName.size(), 2);
            out << kClassName;
        } else {
            write(out, kFirstClass, 2);
        }
        isFirst = false;
        write(out, *block);
    }
    return out.str();
}

SelectedTexts listSelected(const std::filesystem::path& file) {
    const Template blocks = kept(readTemplate(file));
    std::set<std::wstring> names;
    std::set<std::wstring> tags;
    SelectedTexts selected;
    for (const auto& block : blocks) {
        if (!block->selected) {
            continue;
        }
        addOnce(block->name, names, selected.names);
        for (const auto& [tag, entry] : block->attributes) {
            addOnce(tag, tags, selected.tags);
        }
    }
    return selected;
}

namespace {

bool isBelow(std::wstring left, std::wstring right) {
    const std::locale& locale = userLocale();
    const auto& letters = std::use_facet<std::ctype<wchar_t>>(locale);
    letters.tolower(left.data(), left.data() + left.size());
    letters.tolower(right.data(), right.data() + right.size());
    return std::use_facet<std::collate<wchar_t>>(locale).compare(
               left.data(), left.data() + left.size(), right.data(), right.data() + right.size()) < 0;
}

} // namespace

void sortTags(std::vector<std::wstring>& tags) {
    for (std::size_t gap = tags.size() / 2; gap >= 1; gap /= 2) {
        for (std::size_t i = gap; i < tags.size(); ++i) {
            for (std::size_t j = i; j >= gap; j -= gap) { // on to the first, whether or not it is swapped
                if (isBelow(tags[j], tags[j - gap])) {
                    std::swap(tags[j], tags[j - gap]);
                }
            }
        }
    }
}

} // namespace bench::literal
