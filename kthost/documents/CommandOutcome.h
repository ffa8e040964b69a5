#pragma once

#include <OrbxErrorStatus.h>

#include <cstdint>
#include <string>

namespace kthost {

/// How a command ended. A cancelled one was given up by whoever ran it, which is no error.
enum class CommandResult : std::uint8_t { done, failed, cancelled };

/// Unless it is done, the drawing is as it was before the command.
struct [[nodiscard]] CommandOutcome {
    CommandResult result = CommandResult::done;
    std::string reason; ///< why it failed, UTF-8; empty otherwise

    explicit operator bool() const noexcept { return result == CommandResult::done; }
};

} // namespace kthost
