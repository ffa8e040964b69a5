#pragma once

#include "OccurrencePaths.h"
#include "PlacedReference.h"

#include <vector>

namespace parts {

/// One way in which a reference comes to lie in a layout.
struct Occurrence {
    const PlacedReference* reference = nullptr;
    std::wstring path; ///< as in Designation
    std::wstring designator;
    std::int32_t unit = 1;
};

/// All occurrences of the references, in the natural order of their designators, those of one designator by
/// unit, path and handle. An occurrence that the drawing gives no designator has that of the reference's own
/// attribute "Reference". The references must outlive the result. Throws what OccurrencePaths throws.
std::vector<Occurrence> findOccurrences(const PlacedReferences& references, const Containers& containers,
                                        OccurrencePaths& paths);

} // namespace parts
