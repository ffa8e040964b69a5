#pragma once

#include "legacy/KeyedHash.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

/// A hash of text that differs from one run of the program to the next, so that no file can be made whose
/// tags all fall together.
class TagHash {
public:
    std::size_t operator()(std::wstring_view text) const {
        return ofBytes({reinterpret_cast<const char*>(text.data()), text.size() * sizeof(wchar_t)});
    }

    /// Of text that is kept as bytes.
    [[nodiscard]] std::uint64_t ofBytes(std::string_view bytes) const { return kOfThisRun.of(bytes); }

private:
    static const KeyedHash kOfThisRun;
};
