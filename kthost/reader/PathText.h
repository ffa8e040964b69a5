#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace kthost {

/// The path with "/" between folders, whatever the system writes there.
std::wstring pathText(const std::filesystem::path& path);

std::filesystem::path pathOf(std::wstring_view text);

} // namespace kthost
