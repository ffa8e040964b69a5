#include "PlacedReference.h"

#include <algorithm>

namespace parts {

std::wstring_view attributeText(const PlacedReference& reference, std::wstring_view tag) {
    const auto found = std::find_if(reference.attributes.begin(), reference.attributes.end(),
                                    [tag](const Attribute& attribute) { return attribute.tag == tag; });
    return found == reference.attributes.end() ? std::wstring_view() : found->text;
}

std::wstring handleText(std::uint64_t handle) {
    std::wstring text;
    do {
        text += L"0123456789ABCDEF"[handle % 16];
        handle /= 16;
    } while (handle != 0);
    std::reverse(text.begin(), text.end());
    return text;
}

} // namespace parts
