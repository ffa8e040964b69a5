#include "kthost/runtime/PathName.h"

namespace kthost {

std::string pathUtf8(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

std::string fileNameOf(const std::filesystem::path& path) {
    return pathUtf8(path.filename());
}

} // namespace kthost
