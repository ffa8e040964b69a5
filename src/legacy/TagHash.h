#pragma once

#include <cstddef>
#include <string_view>

/// A hash of text that differs from one run of the program to the next, so that no file can be made whose
/// tags all fall together.
struct TagHash {
    /// Not noexcept: the standard library's tables keep the hashes of their texts only then, and looking a
    /// text up again to hash it once more costs more than anything else.
    std::size_t operator()(std::wstring_view text) const;
};
