#pragma once

#include <WindowSystem.h>

#include <string>

namespace kthost {

/// Ids of registered messages begin here.
inline constexpr UINT kFirstRegisteredMessage = 0xC000;

/// The name that a message id was registered under; empty when it was not. Ids stay for the life of the
/// process.
std::wstring registeredMessageName(UINT message);

} // namespace kthost
