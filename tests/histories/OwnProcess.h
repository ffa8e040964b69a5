#pragma once

#include <cstdint>
#include <functional>

namespace histories {

/// What a process prints.
enum class Words : std::uint8_t { heard, dropped };

/// True when `work` does not come to its end: it is done in a process split off from this one, which it can
/// take along with it. Where the system splits off none, it is not done, and the result is false.
bool isFatal(const std::function<void()>& work, Words words);

} // namespace histories
