#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace parts {

enum class RowKind : std::uint8_t { reference, occurrence, component };

/// An attribute that a reference must have with that very text to be listed; a missing attribute counts as
/// empty.
struct Condition {
    std::wstring tag;
    std::wstring text;

    bool operator==(const Condition&) const = default;
};

struct Position {
    double x = 0.0;
    double y = 0.0;

    bool operator==(const Position&) const = default;
};

/// What a list is asked to hold and where it is to go.
struct Options {
    std::vector<std::wstring> blocks; ///< names of definitions; empty for all
    std::wstring templateFile;        ///< takes the place of `blocks` when it is not empty
    RowKind kind = RowKind::reference;
    std::vector<Condition> conditions; ///< all have to hold
    std::wstring file;                 ///< empty for none
    std::optional<Position> table;     ///< where to draw the list in the drawing

    bool operator==(const Options&) const = default;
};

} // namespace parts
