#include <SystemPath.h>

std::filesystem::path systemPath(const std::filesystem::path& path) {
    return path;
}
