#include "kthost/window/SystemPath.h"

namespace kthost {

std::filesystem::path systemPath(const std::filesystem::path& path) {
    return path;
}

} // namespace kthost
