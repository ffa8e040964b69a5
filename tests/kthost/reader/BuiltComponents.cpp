#include "tests/kthost/reader/BuiltComponents.h"

#include "kthost/database/DatabaseQueries.h"
#include "kthost/database/DynamicDefinitions.h"

#include <algorithm>
#include <cstdint>

namespace kthost::test {

namespace {

std::wstring attributeText(KtDbObjectId reference, std::wstring_view tag) {
    for (const AttributeView& attribute : attributesOf(reference)) {
        if (attribute.tag == tag) {
            return std::wstring(attribute.text);
        }
    }
    return {};
}

// Names in place of the handles of a path.
std::wstring sheetNames(const Database& database, const std::wstring& path) {
    std::wstring names;
    for (std::size_t at = 0; at + 1 < path.size();) {
        const std::size_t end = std::min(path.find(L'/', at + 1), path.size());
        const std::uint64_t handle = std::stoull(path.substr(at + 1, end - at - 1), nullptr, 16);
        names += L"/" + attributeText(objectByHandle(database, handle), L"Sheetname");
        at = end;
    }
    return names.empty() ? L"/" : names;
}

Component describe(KtDbObjectId reference) {
    const KtDbObjectId definition = definitionOf(reference);
    const KtDbObjectId represented = representedDefinition(definition);
    Component component;
    component.value = attributeText(reference, L"Value");
    component.footprint = attributeText(reference, L"Footprint");
    component.libId = recordName(represented.isNull() ? definition : represented);
    component.isInBom = attributeText(reference, L"in_bom") == L"yes";
    component.isOnBoard = attributeText(reference, L"on_board") == L"yes";
    component.isDnp = attributeText(reference, L"dnp") == L"yes";
    return component;
}

void addOccurrences(const Database& database, KtDbObjectId reference, ComponentMap& components) {
    const std::vector<std::wstring> texts = occurrenceTexts(reference);
    for (std::size_t i = 0; i + 2 < texts.size(); i += 3) {
        if (!texts[i + 1].starts_with(L'#')) {
            Component& component = components.try_emplace(texts[i + 1], describe(reference)).first->second;
            component.units.insert(std::stoi(texts[i + 2]));
            component.sheets.insert(sheetNames(database, texts[i]));
        }
    }
}

} // namespace

ComponentMap componentsIn(BuiltDrawing& drawing) {
    ComponentMap components;
    std::vector<KtDbObjectId> containers = records(drawing.database(), false);
    containers.push_back(drawing.modelSpace());
    for (const KtDbObjectId container : containers) {
        for (const KtDbObjectId reference : referencesIn(container)) {
            addOccurrences(drawing.database(), reference, components);
        }
    }
    return components;
}

} // namespace kthost::test
