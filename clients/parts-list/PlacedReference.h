#pragma once

#include <KtDbObjectId.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace parts {

struct Attribute {
    std::wstring tag;
    std::wstring text;
};

/// What a drawing says about one of the ways in which a reference comes to lie in a layout.
struct Designation {
    std::wstring path; ///< "/", or the handles of the references walked through: "/1A/2B"
    std::wstring designator;
    std::int32_t unit = 1;
};

/// A block reference as it was found in the drawing.
struct PlacedReference {
    KtDbObjectId id;
    std::uint64_t handle = 0;
    KtDbObjectId container;
    std::wstring block; ///< name of the definition, for a dynamic one too
    std::vector<Attribute> attributes;
    std::vector<Designation> designations;
};

/// None is null, and somebody else keeps them.
using PlacedReferences = std::vector<const PlacedReference*>;

/// Text of the first attribute with that tag; empty when there is none.
std::wstring_view attributeText(const PlacedReference& reference, std::wstring_view tag);

/// As people are shown it: hexadecimal, upper case.
std::wstring handleText(std::uint64_t handle);

} // namespace parts
