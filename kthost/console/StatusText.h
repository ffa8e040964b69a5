#pragma once

#include <OrbxErrorStatus.h>

#include <string>

namespace kthost {

/// What a status means, in words that fit behind "cannot be done: ".
std::string statusText(Orbx::ErrorStatus status);

/// Throws CommandError with `what` and the status in words, unless that is eOk.
void require(Orbx::ErrorStatus status, const std::string& what);

} // namespace kthost
