#include "kthost/window/RegisteredMessages.h"

#include <algorithm>
#include <deque>
#include <string_view>

namespace {

constexpr std::size_t kMostMessages = 0x4000; // ids end at 0xFFFF

// Lives as long as the process, as the ids do: modules keep them across hosts.
std::deque<std::wstring>& registeredNames() {
    static std::deque<std::wstring> names;
    return names;
}

} // namespace

UINT RegisterWindowMessageW(const wchar_t* name) {
    auto& names = registeredNames();
    if (name == nullptr || *name == L'\0') {
        return 0;
    }
    const auto found = std::ranges::find(names, std::wstring_view(name));
    const auto index = static_cast<UINT>(found - names.begin());
    if (index >= kMostMessages) {
        return 0;
    }
    if (found == names.end()) {
        names.emplace_back(name);
    }
    return kthost::kFirstRegisteredMessage + index;
}

namespace kthost {

std::wstring registeredMessageName(UINT message) {
    const auto& names = registeredNames();
    const std::size_t index = std::size_t{message} - kFirstRegisteredMessage;
    return message < kFirstRegisteredMessage || index >= names.size() ? std::wstring() : names[index];
}

} // namespace kthost
