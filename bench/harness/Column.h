#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace bench {

/// Who does the work that is measured. Each repetition measures all of them, one after the other, in this
/// order.
enum class Column : std::uint8_t {
    module,  ///< the module as it is shipped
    literal, ///< the same algorithms with std::map and std::set, straight down
    limit,   ///< only the host calls that cannot be avoided, in the same order
};

inline constexpr std::array kColumns{Column::module, Column::literal, Column::limit};

/// As it is printed: "this", "literal", "limit".
const char* nameOf(Column column);

/// What a scene is made for.
struct Setting {
    Column column = Column::module;
    std::size_t size = 0;
    std::size_t repetition = 0; ///< 0 counts allocations, the others are timed
};

} // namespace bench
