#include "kthost/window/RegisteredMessages.h"

#include <array>

namespace kthost {

std::wstring registeredMessageName(UINT message) {
    // The system keeps the names of messages and of clipboard formats in one table, and tells only the
    // latter.
    std::array<wchar_t, 256> name{}; // no longer than that
    const int length = GetClipboardFormatNameW(message, name.data(), static_cast<int>(name.size()));
    return {name.data(), static_cast<std::size_t>(length)};
}

} // namespace kthost
