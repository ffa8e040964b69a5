#pragma once

#include "bench/templates/TemplateContents.h"

#include <filesystem>
#include <list>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace bench::literal {

struct AttributeEntry {
    bool selected = false;
    std::wstring first;
    std::wstring second;
};

struct BlockEntry {
    std::wstring name;
    bool selected = true;
    std::map<std::wstring, std::unique_ptr<AttributeEntry>> attributes;
};

using Template = std::vector<std::unique_ptr<BlockEntry>>;

Template makeTemplate(const TemplateContents& contents);

/// The tags of each block are sorted the way that is stated for them, comparison by comparison.
std::string writeTemplate(const Template& source);

struct SelectedTexts {
    std::list<std::wstring> names;
    std::list<std::wstring> tags;
};

/// Of a file as templates are written: wide texts, shorter than 255. Throws std::runtime_error when there is
/// something else in it.
SelectedTexts listSelected(const std::filesystem::path& file);

/// Ascending without regard to case, as the user's locale has it.
void sortTags(std::vector<std::wstring>& tags);

} // namespace bench::literal
