#pragma once

#include "bench/templates/TemplateContents.h"

#include <filesystem>
#include <string>
#include <vector>

namespace bench {

/// The bytes of a template, by one loop over what it holds.
std::string writeBare(const TemplateContents& contents);

/// All texts of a template file as `writeBare` makes them, by one loop over its bytes: the names, each with
/// its tags behind it. Throws std::runtime_error when there is something else in the file.
std::vector<std::wstring> readBare(const std::filesystem::path& file);

} // namespace bench
