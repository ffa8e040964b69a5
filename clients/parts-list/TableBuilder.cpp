#include "TableBuilder.h"

#include "NaturalOrder.h"

#include <algorithm>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace parts {

namespace {

using Columns = std::unordered_map<std::wstring_view, std::size_t>;

/// The first attribute of a tag is the one that counts.
void fillRow(Row& row, const PlacedReference& reference, const Columns& columns) {
    for (auto attribute = reference.attributes.rbegin(); attribute != reference.attributes.rend();
         ++attribute) {
        const auto column = columns.find(attribute->tag);
        if (column != columns.end()) {
            row.cells[column->second] = attribute->text;
        }
    }
}

} // namespace

TableBuilder::TableBuilder(std::vector<std::wstring> fixedColumns) {
    table_.columns = std::move(fixedColumns);
}

void TableBuilder::addRow(std::wstring key, std::vector<std::wstring> cells,
                          const PlacedReference& reference) {
    table_.rows.push_back({std::move(key), std::move(cells)});
    references_.push_back(&reference);
}

PartsTable TableBuilder::build(const std::vector<std::wstring>& tags) {
    const std::vector<std::wstring> wanted = tags.empty() ? collectTags() : tags;
    Columns columns;
    for (const std::wstring& tag : wanted) {
        if (std::find(table_.columns.begin(), table_.columns.end(), tag) == table_.columns.end()) {
            columns.emplace(tag, table_.columns.size());
            table_.columns.push_back(tag);
        }
    }
    for (std::size_t row = 0; row < table_.rows.size(); ++row) {
        table_.rows[row].cells.resize(table_.columns.size());
        fillRow(table_.rows[row], *references_[row], columns);
    }
    references_.clear();
    return std::exchange(table_, {});
}

std::vector<std::wstring> TableBuilder::collectTags() const {
    std::unordered_set<std::wstring_view> seen;
    for (const PlacedReference* reference : references_) {
        for (const Attribute& attribute : reference->attributes) {
            seen.insert(attribute.tag);
        }
    }
    std::vector<std::wstring> tags(seen.begin(), seen.end());
    std::sort(tags.begin(), tags.end(), NaturalLess());
    return tags;
}

} // namespace parts
