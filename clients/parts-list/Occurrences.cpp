#include "Occurrences.h"

#include "NaturalOrder.h"

#include <algorithm>
#include <compare>
#include <string_view>
#include <tuple>
#include <unordered_map>

namespace parts {

namespace {

using ByPath = std::unordered_map<std::wstring_view, const Designation*>;

/// Of two for the same path the first counts.
ByPath indexByPath(const PlacedReference& reference) {
    ByPath index;
    index.reserve(reference.designations.size());
    for (const Designation& designation : reference.designations) {
        index.try_emplace(designation.path, &designation);
    }
    return index;
}

Occurrence makeOccurrence(const PlacedReference& reference, std::wstring path, const ByPath& designations) {
    Occurrence occurrence;
    occurrence.reference = &reference;
    occurrence.path = path.empty() ? L"/" : std::move(path);
    const auto found = designations.find(occurrence.path);
    if (found == designations.end()) {
        occurrence.designator = attributeText(reference, L"Reference");
    } else {
        occurrence.designator = found->second->designator;
        occurrence.unit = found->second->unit;
    }
    return occurrence;
}

bool comesBefore(const Occurrence& left, const Occurrence& right) {
    const std::strong_ordering order = naturalOrder(left.designator, right.designator);
    return std::is_neq(order)
               ? std::is_lt(order)
               : std::tie(left.unit, left.path, left.reference->handle, left.reference->id) <
                     std::tie(right.unit, right.path, right.reference->handle, right.reference->id);
}

} // namespace

std::vector<Occurrence> findOccurrences(const PlacedReferences& references, const Containers& containers,
                                        OccurrencePaths& paths) {
    std::vector<Occurrence> occurrences;
    occurrences.reserve(references.size());
    for (const PlacedReference* reference : references) {
        const ByPath designations = indexByPath(*reference);
        for (const std::wstring& path : paths.of(containers.resolve(reference->container))) {
            occurrences.push_back(makeOccurrence(*reference, path, designations));
        }
    }
    std::sort(occurrences.begin(), occurrences.end(), comesBefore);
    return occurrences;
}

} // namespace parts
