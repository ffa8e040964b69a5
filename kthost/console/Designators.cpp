#include "kthost/console/Designators.h"

#include <KtArray.h>
#include <KtDbBlockReference.h>
#include <KtDbXData.h>

#include "kthost/console/ObjectNames.h"
#include "kthost/console/OpenForRead.h"
#include "kthost/console/StatusText.h"
#include "kthost/database/DatabaseQueries.h"
#include "kthost/database/ExtendedData.h"

#include <algorithm>

namespace kthost {

namespace {

constexpr std::size_t kValuesEach = 3; // path, designator, unit
constexpr std::size_t kDesignator = 1;

bool isLayout(const Database& database, KtDbObjectId record) {
    const std::vector<KtDbObjectId> layouts = records(database, true);
    return std::find(layouts.begin(), layouts.end(), record) != layouts.end();
}

std::vector<XDataValue> readOccurrences(KtDbObjectId reference) {
    std::vector<XDataValue> values;
    const OpenForRead<KtDbBlockReference> opened(reference);
    KtArray<KtDbXDataItem> items;
    if (opened->getXData(kKtDbOccurrences, items) == Orbx::eOk) {
        values.reserve(items.length());
        for (const KtDbXDataItem& item : items) {
            values.push_back({item.kind, item.integer, item.text});
        }
    }
    return values;
}

} // namespace

std::vector<XDataValue> designateInLayout(const Database& database, const NewReference& reference,
                                          std::uint32_t unit) {
    const auto designator = std::find_if(reference.attributes.begin(), reference.attributes.end(),
                                         [](const AttributeText& one) { return one.tag == L"Reference"; });
    if (designator == reference.attributes.end() || !isLayout(database, reference.container)) {
        return {};
    }
    return {{KtDbXDataItem::kText, 0, L"/"},
            {KtDbXDataItem::kText, 0, designator->text},
            {KtDbXDataItem::kInteger, static_cast<std::int32_t>(unit), L""}};
}

void redesignate(Database& database, KtDbObjectId reference, std::wstring_view before,
                 std::wstring_view after) {
    std::vector<XDataValue> values = readOccurrences(reference);
    bool changed = false;
    for (std::size_t value = kDesignator; value < values.size(); value += kValuesEach) {
        if (values[value].text == before) {
            values[value].text = after;
            changed = true;
        }
    }
    if (changed) {
        require(setXData(database, reference, kKtDbOccurrences, std::move(values)),
                referenceText(reference) + " cannot be changed");
    }
}

} // namespace kthost
