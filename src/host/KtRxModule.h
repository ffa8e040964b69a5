#pragma once

#include <cstdint>

/// What the host and a run-time module say to each other through the module's exports `ktrxEntryPoint` and
/// `ktrxGetApiVersion`.
namespace KtRx {

/// Codes given to `ktrxEntryPoint`. A module ignores those that it does not know.
enum AppMessage : std::uint32_t {
    kInitialise = 1,
    kUnload = 2,
    kDrawingOpened = 3,  ///< sent once for each document that is opened while the module is loaded
    kDrawingClosing = 4, ///< sent before each document is closed
    kQuit = 5,           ///< the host is about to end; modules are unloaded next
};

/// What `ktrxEntryPoint` returns.
enum AppReturn : std::int32_t {
    kDone = 0,
    kError = 3, ///< initialise: the module cannot be used; the host releases it
};

/// Host interface version, major in the upper 16 bits, minor in the lower.
inline constexpr std::uint32_t kApiVersion = 0x180000;

} // namespace KtRx

/// Declares that a module can work with several open documents. `applicationId` is what came with the
/// initialise message. False for an id that is not that of a module being loaded or loaded.
bool ktrxRegisterAppMDIAware(void* applicationId);
