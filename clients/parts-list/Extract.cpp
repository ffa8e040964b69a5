#include "Extract.h"

#include "Containers.h"
#include "DrawingIds.h"
#include "NaturalOrder.h"
#include "OccurrencePaths.h"
#include "Occurrences.h"
#include "ReadReferences.h"
#include "TableBuilder.h"

#include <algorithm>
#include <compare>
#include <tuple>

namespace parts {

namespace {

bool isWanted(const PlacedReference& reference, const Selection& selection) {
    return reference.id != selection.ownTable &&
           std::all_of(selection.conditions.begin(), selection.conditions.end(),
                       [&](const Condition& condition) {
                           return attributeText(reference, condition.tag) == condition.text;
                       });
}

PlacedReferences selectReferences(const Selection& selection, ReferenceReader& reader) {
    PlacedReferences references = reader.read(withRepresentations(selection.definitions));
    std::erase_if(references,
                  [&](const PlacedReference* reference) { return !isWanted(*reference, selection); });
    return references;
}

bool isListedBefore(const PlacedReference* left, const PlacedReference* right) {
    const std::strong_ordering order = naturalOrder(left->block, right->block);
    return std::is_neq(order) ? std::is_lt(order)
                              : std::tie(left->handle, left->id) < std::tie(right->handle, right->id);
}

PartsTable listReferences(PlacedReferences references, Containers& containers, const Selection& selection) {
    std::sort(references.begin(), references.end(), isListedBefore);
    TableBuilder builder({L"Block", L"Container", L"Handle"});
    for (const PlacedReference* reference : references) {
        // Handles repeat between a drawing and those attached to it, ids do not.
        builder.addRow(
            handleText(reference->id.asUnsigned()),
            {reference->block, containers.name(reference->container), handleText(reference->handle)},
            *reference);
    }
    return builder.build(selection.tags);
}

PartsTable listOccurrences(const std::vector<Occurrence>& occurrences, Containers& containers,
                           const Selection& selection) {
    TableBuilder builder({L"Reference", L"Unit", L"Block", L"Container", L"Handle", L"Path"});
    for (const Occurrence& occurrence : occurrences) {
        const PlacedReference& reference = *occurrence.reference;
        builder.addRow(occurrence.path + L"/" + handleText(reference.id.asUnsigned()),
                       {occurrence.designator, std::to_wstring(occurrence.unit), reference.block,
                        containers.name(reference.container), handleText(reference.handle), occurrence.path},
                       reference);
    }
    return builder.build(selection.tags);
}

bool isComponent(const Occurrence& occurrence) {
    return !occurrence.designator.empty() && occurrence.designator.front() != L'#';
}

/// The units that are placed, each once: "1,2,3". They come in ascending order.
template <typename Iterator>
std::wstring unitsText(Iterator first, Iterator last) {
    std::wstring text = std::to_wstring(first->unit);
    for (Iterator before = first++; first != last; before = first++) {
        if (first->unit != before->unit) {
            text += L"," + std::to_wstring(first->unit);
        }
    }
    return text;
}

PartsTable listComponents(const std::vector<Occurrence>& occurrences, const Selection& selection) {
    TableBuilder builder({L"Reference", L"Block", L"Units"});
    for (auto first = occurrences.begin(); first != occurrences.end();) {
        const auto last = std::find_if(first, occurrences.end(), [&](const Occurrence& occurrence) {
            return occurrence.designator != first->designator;
        });
        if (isComponent(*first)) {
            builder.addRow(first->designator,
                           {first->designator, first->reference->block, unitsText(first, last)},
                           *first->reference);
        }
        first = last;
    }
    return builder.build(selection.tags);
}

} // namespace

PartsTable extractParts(const KtDbDatabase& database, const Selection& selection, ReferenceReader& reader) {
    Containers containers(database);
    PlacedReferences references = selectReferences(selection, reader);
    if (selection.kind == RowKind::reference) {
        return listReferences(std::move(references), containers, selection);
    }
    OccurrencePaths paths([&](KtDbObjectId container) { return containers.placements(container); },
                          [&](KtDbObjectId container) { return containers.isLayout(container); });
    const std::vector<Occurrence> occurrences = findOccurrences(references, containers, paths);
    return selection.kind == RowKind::occurrence ? listOccurrences(occurrences, containers, selection)
                                                 : listComponents(occurrences, selection);
}

PartsTable extractParts(const KtDbDatabase& database, const Selection& selection) {
    ReferenceReader reader;
    return extractParts(database, selection, reader);
}

} // namespace parts
