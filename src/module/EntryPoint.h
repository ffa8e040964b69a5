#pragma once

#include <ktdx/KtDxNotify.h>

#include <cstdint>

extern "C" {

/// The host's way in: answers KtRx::kInitialise and KtRx::kUnload, and every other message with 0.
/// 0 on success, 3 when the module cannot be used.
KTDX_EXPORT std::int32_t ktrxEntryPoint(std::uint32_t message, void* applicationId);

/// Host interface version that the module was built for. The argument is the host's own version, and is not
/// looked at: it is the host that decides whether the two go together.
KTDX_EXPORT std::uint32_t ktrxGetApiVersion(std::uint32_t hostVersion);

} // extern "C"
