#pragma once

#include "kthost/database/Database.h"
#include "kthost/database/XData.h"
#include "kthost/reader/Design.h"

#include <KtDbObjectId.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace kthost::test {

/// A drawing built from a design, and what tests ask about it.
class BuiltDrawing {
public:
    explicit BuiltDrawing(const Design& design);

    Database& database() { return *database_; }

    /// The living record of that name; fails the test when there is none.
    KtDbObjectId record(std::wstring_view name) const;

    /// Names of all records but layouts, in table order.
    std::vector<std::wstring> recordNames() const;

    /// Names of the records that the references in a record refer to, in drawing order.
    std::vector<std::wstring> placedIn(KtDbObjectId container) const;

    KtDbObjectId modelSpace() const { return database_->modelSpaceId(); }

    /// The only reference in the container to a record that is, or represents, the named one.
    KtDbObjectId placed(KtDbObjectId container, std::wstring_view name) const;

private:
    std::unique_ptr<Database> database_;
};

/// "TAG=TEXT" of each living attribute, in order.
std::vector<std::wstring> attributeTexts(KtDbObjectId reference);

/// The values of the reference's occurrences; integers as text.
std::vector<std::wstring> occurrenceTexts(KtDbObjectId reference);

std::wstring handleText(KtDbObjectId id);

} // namespace kthost::test
