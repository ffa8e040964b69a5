#include "kthost/window/MessageText.h"

#include "kthost/window/RegisteredMessages.h"

namespace kthost {

std::wstring messageText(UINT message) {
    const std::wstring name = registeredMessageName(message);
    return name.empty() ? std::to_wstring(message) : name;
}

} // namespace kthost
