#pragma once

#include <OrbxErrorStatus.h>

namespace kthost {

/// Throws std::runtime_error unless the status is eOk. What a drawing is built of has been checked when it
/// was read, so that any other status is a fault of this host and not of the file.
void require(Orbx::ErrorStatus status, const char* action);

} // namespace kthost
