#pragma once

#include <functional>
#include <string_view>

namespace kthost {

/// Takes the lines that modules print, without their ends.
using PrintSink = std::function<void(std::wstring_view line)>;

/// Where lines go from now on; an empty one puts standard output (UTF-8) back. A host's end does that too.
void setPrintSink(PrintSink sink);

void printLine(std::wstring_view line);

} // namespace kthost
