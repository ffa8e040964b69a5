#pragma once

#include <string_view>

/// Whether a command line stays inside the current folder: no word of a line that takes a file leads out of
/// it. The lines that `together` runs count as well.
bool staysInFolder(std::string_view line);
