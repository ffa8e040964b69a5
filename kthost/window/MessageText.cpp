#include "kthost/window/MessageText.h"

#include "kthost/window/RegisteredMessages.h"

namespace kthost {

std::wstring messageText(UINT message) {
    const std::wstring_view name = registeredMessageName(message);
    return name.empty() ? std::to_wstring(message) : std::wstring(name);
}

} // namespace kthost
