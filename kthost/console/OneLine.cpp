#include "kthost/console/OneLine.h"

namespace kthost {

namespace {

bool isControl(char byte) {
    return static_cast<unsigned char>(byte) < 0x20 || byte == 0x7F;
}

} // namespace

std::string onOneLine(std::string_view text) {
    std::string line;
    line.reserve(text.size());
    for (const char byte : text) {
        if (byte == '\n') {
            line += "\\n";
        } else {
            line += isControl(byte) ? '?' : byte;
        }
    }
    return line;
}

} // namespace kthost
