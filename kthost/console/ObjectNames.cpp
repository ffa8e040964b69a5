#include "kthost/console/ObjectNames.h"

#include <KtDbBlockTableRecord.h>

#include "kthost/database/DatabaseQueries.h"
#include "kthost/database/DynamicDefinitions.h"
#include "kthost/runtime/Utf8.h"

#include <algorithm>
#include <charconv>

namespace kthost {

std::string handleText(std::uint64_t handle) {
    std::string digits(16, '0');
    const auto [end, failure] = std::to_chars(digits.data(), digits.data() + digits.size(), handle, 16);
    digits.resize(static_cast<std::size_t>(end - digits.data()));
    std::transform(digits.begin(), digits.end(), digits.begin(),
                   [](char digit) { return digit >= 'a' ? static_cast<char>(digit - 'a' + 'A') : digit; });
    return "0x" + digits;
}

std::optional<std::uint64_t> parseHandle(std::wstring_view text) {
    if (!text.starts_with(L"0x") || text.size() == 2) {
        return {};
    }
    std::uint64_t handle = 0;
    const std::string digits = toUtf8(text.substr(2));
    const auto [end, failure] = std::from_chars(digits.data(), digits.data() + digits.size(), handle, 16);
    if (failure != std::errc() || end != digits.data() + digits.size()) {
        return {};
    }
    return handle;
}

std::wstring_view attributeText(KtDbObjectId reference, std::wstring_view tag) {
    for (const AttributeView& attribute : attributesOf(reference)) {
        if (attribute.tag == tag) {
            return attribute.text;
        }
    }
    return {};
}

std::string blockName(KtDbObjectId reference) {
    const KtDbObjectId record = definitionOf(reference);
    const KtDbObjectId represented = representedDefinition(record);
    return toUtf8(recordName(represented.isNull() ? record : represented));
}

std::string referenceText(KtDbObjectId reference) {
    const std::wstring_view designator = attributeText(reference, L"Reference");
    const std::string handle = handleText(handleOf(reference));
    return designator.empty() ? handle : handle + " " + toUtf8(designator);
}

namespace {

void sortByHandle(std::vector<KtDbObjectId>& ids) {
    std::sort(ids.begin(), ids.end(),
              [](KtDbObjectId a, KtDbObjectId b) { return handleOf(a) < handleOf(b); });
}

KtArray<KtDbObjectId> erasedReferencesTo(KtDbObjectId record) {
    KtArray<KtDbObjectId> ids;
    KtDbBlockTableRecord* opened = nullptr;
    if (ktdbOpenObject(opened, record, KtDb::kForRead) == Orbx::eOk) {
        static_cast<void>(opened->getErasedBlockReferenceIds(ids)); // what cannot be listed is not there
        static_cast<void>(opened->close());
    }
    return ids;
}

} // namespace

std::vector<KtDbObjectId> erasedByDesignator(const Database& database, std::wstring_view designator) {
    std::vector<KtDbObjectId> found;
    for (const KtDbObjectId record : records(database, false)) {
        for (const KtDbObjectId reference : erasedReferencesTo(record)) {
            if (attributeText(reference, L"Reference") == designator) {
                found.push_back(reference);
            }
        }
    }
    sortByHandle(found);
    return found;
}

std::vector<KtDbObjectId> allReferences(const Database& database) {
    std::vector<KtDbObjectId> all;
    for (const bool layouts : {true, false}) {
        for (const KtDbObjectId record : records(database, layouts)) {
            const std::vector<KtDbObjectId> inside = referencesIn(record);
            all.insert(all.end(), inside.begin(), inside.end());
        }
    }
    std::sort(all.begin(), all.end(),
              [](KtDbObjectId a, KtDbObjectId b) { return handleOf(a) < handleOf(b); });
    return all;
}

std::vector<KtDbObjectId> partsOf(const Database& database) {
    std::vector<KtDbObjectId> parts = allReferences(database);
    std::erase_if(parts, [](KtDbObjectId reference) {
        const std::wstring_view designator = attributeText(reference, L"Reference");
        return designator.empty() || designator.front() == L'#';
    });
    return parts;
}

} // namespace kthost
