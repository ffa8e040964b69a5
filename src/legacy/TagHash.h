#pragma once

#include <cstddef>
#include <string_view>

/// A hash of text that differs from one run of the program to the next, so that no file can be made whose
/// tags all fall together.
struct TagHash {
    std::size_t operator()(std::wstring_view text) const noexcept;
};
