#include "kthost/console/ListCommand.h"

#include "kthost/console/ColumnText.h"
#include "kthost/console/ListRows.h"
#include "kthost/console/OneLine.h"
#include "kthost/console/Session.h"
#include "kthost/console/Words.h"
#include "kthost/runtime/Utf8.h"

#include <algorithm>
#include <string>

namespace kthost {

namespace {

struct Listing {
    const wchar_t* word;
    const char* one; ///< what a row is, for the last line
    ListRows (*rows)(Session& session, const std::wstring& name);
};

constexpr Listing kListings[] = {
    {L"blocks", "block", listBlocks},    {L"references", "reference", listReferences},
    {L"layouts", "layout", listLayouts}, {L"attributes", "attribute", listAttributes},
    {L"tables", "table", listTables},    {L"documents", "document", listDocuments},
    {L"modules", "module", listModules},
};

const Listing& listingNamed(const std::wstring& word) {
    const auto found = std::find_if(std::begin(kListings), std::end(kListings),
                                    [&](const Listing& listing) { return listing.word == word; });
    if (found == std::end(kListings)) {
        throw UsageError("'" + toUtf8(word) + "' cannot be listed");
    }
    return *found;
}

/// Before the columns are aligned: what is shown instead of a line end is longer.
void makeCellsOneLine(ListRows& rows) {
    for (auto& row : rows) {
        std::transform(row.begin(), row.end(), row.begin(), onOneLine);
    }
}

} // namespace

void runList(Session& session, Words& words) {
    const Listing& listing = listingNamed(words.take("what to list"));
    const std::wstring name = words.atEnd() ? L"" : words.take("NAME");
    words.expectEnd();
    ListRows rows = listing.rows(session, name);
    makeCellsOneLine(rows);
    for (const std::string& line : alignColumns(rows)) {
        session.say(line);
    }
    session.say(std::to_string(rows.size() - 1) + " " + listing.one + (rows.size() == 2 ? "" : "s"));
}

} // namespace kthost
