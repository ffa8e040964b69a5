#pragma once

#include <cstdint>

/// On Windows the modules call the system's own functions. A clock that a script sets, input that a test has
/// waiting, and messages that a trace shows when they are posted need the host to stand between. It does so
/// in whatever is linked against it, while it has to and no longer; where the host itself defines these
/// functions, there is nothing to do. A function of a module that is running may have fetched an address
/// already and calls that until it returns. User-interface thread only.
namespace kthost {

enum class WindowCall : std::uint8_t { getTickCount, getInputState, postMessage };

/// Whether that call is answered by the host from now on.
void setAnswered(WindowCall call, bool byHost);

/// To be called when libraries have come into memory.
void answerInNewLibraries();

} // namespace kthost
