#include "tools/ktemplate/TemplateOutput.h"

#include "tools/ktemplate/Text.h"

#include <algorithm>
#include <ostream>
#include <string_view>

namespace ktemplate {

namespace {

std::string_view mark(bool selected) {
    return selected ? "[x] " : "[ ] ";
}

std::string shown(const std::wstring& name) {
    return name.empty() ? "(empty)" : displayText(name);
}

std::string_view jsonFlag(bool selected) {
    return selected ? "true" : "false";
}

std::string counted(std::size_t count, const std::string& noun) {
    return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

/// Puts the comma and the line end where they belong between the elements of a JSON array.
class Separator {
public:
    Separator(std::ostream& out, std::string_view indent) : out_(&out), indent_(indent) {}

    void beforeElement() {
        *out_ << (first_ ? "\n" : ",\n") << indent_;
        first_ = false;
    }

    /// The array's last line end, unless it is empty.
    void atEnd(std::string_view outerIndent) {
        if (!first_) {
            *out_ << "\n" << outerIndent;
        }
    }

private:
    std::ostream* out_;
    std::string_view indent_;
    bool first_ = true;
};

void printAttributes(const AttributeMap& attributes, std::ostream& out) {
    Separator separator(out, "        ");
    for (const auto& [tag, entry] : attributes) {
        separator.beforeElement();
        out << R"({"tag": )" << jsonString(tag) << R"(, "selected": )" << jsonFlag(entry->m_bSelected) << "}";
    }
    separator.atEnd("      ");
}

void printStrings(const std::vector<std::wstring>& strings, std::ostream& out) {
    Separator separator(out, "    ");
    for (const std::wstring& string : strings) {
        separator.beforeElement();
        out << jsonString(string);
    }
    separator.atEnd("  ");
}

} // namespace

void printForPeople(const CEattMain& contents, std::ostream& out) {
    const auto& blocks = contents.m_arrBlocks;
    const auto selected =
        std::count_if(blocks.begin(), blocks.end(), [](const auto& b) { return b->m_bSelected; });
    out << "version " << contents.m_nVersion << ", " << counted(blocks.size(), "block") << ", " << selected
        << " selected\n";
    for (const auto& block : blocks) {
        out << mark(block->m_bSelected) << shown(block->m_strBlockName) << '\n';
        for (const auto& [tag, entry] : block->m_mapAttributes) {
            out << "    " << mark(entry->m_bSelected) << shown(tag) << '\n';
        }
    }
}

void printJson(const CEattMain& contents, std::ostream& out) {
    out << "{\n  \"version\": " << contents.m_nVersion << ",\n  \"blocks\": [";
    Separator separator(out, "    ");
    for (const auto& block : contents.m_arrBlocks) {
        separator.beforeElement();
        out << "{\n      \"name\": " << jsonString(block->m_strBlockName)
            << ",\n      \"selected\": " << jsonFlag(block->m_bSelected) << ",\n      \"attributes\": [";
        printAttributes(block->m_mapAttributes, out);
        out << "]\n    }";
    }
    separator.atEnd("  ");
    out << "]\n}\n";
}

void printLists(const std::vector<std::wstring>& blockNames, const std::vector<std::wstring>& attributeTags,
                std::ostream& out) {
    out << "{\n  \"blockNames\": [";
    printStrings(blockNames, out);
    out << "],\n  \"attributeTags\": [";
    printStrings(attributeTags, out);
    out << "]\n}\n";
}

} // namespace ktemplate
