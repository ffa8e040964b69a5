#pragma once

#include "PartsTable.h"
#include "PlacedReference.h"

namespace parts {

/// Puts a table together: first columns that every row has, then one for each attribute tag. Which tags there
/// are is known only when the last row has come. The references must outlive the builder.
class TableBuilder {
public:
    explicit TableBuilder(std::vector<std::wstring> fixedColumns);

    /// `cells` are those of the fixed columns.
    void addRow(std::wstring key, std::vector<std::wstring> cells, const PlacedReference& reference);

    /// With `tags` these are the tag columns, in that order. Without, all tags that occur are, in their
    /// natural order, so that columns stay where they are when rows come and go. A tag with the name of a
    /// fixed column is not repeated. The builder is empty afterwards.
    PartsTable build(const std::vector<std::wstring>& tags);

private:
    std::vector<std::wstring> collectTags() const;

    PartsTable table_;
    std::vector<const PlacedReference*> references_; // for each row where its attributes are
};

} // namespace parts
