#include "kthost/window/windows/SystemMessage.h"

#include "kthost/runtime/Utf8.h"

#include <array>

namespace kthost {

std::string systemMessage(DWORD code) {
    std::array<wchar_t, 512> text{};
    constexpr DWORD kHow =
        FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS | FORMAT_MESSAGE_MAX_WIDTH_MASK;
    DWORD length =
        FormatMessageW(kHow, nullptr, code, 0, text.data(), static_cast<DWORD>(text.size()), nullptr);
    while (length > 0 && text[length - 1] == L' ') {
        --length;
    }
    return length == 0 ? "error " + std::to_string(code) : toUtf8({text.data(), length});
}

} // namespace kthost
