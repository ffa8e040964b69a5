#pragma once

#include "kthost/window/SharedLibrary.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace kthost {

/// Something that is still there when it should not be.
struct Leftover {
    std::string text;           ///< what it is, UTF-8, such as "message filter idleCheckFilter"
    const void* code = nullptr; ///< where its code lies; null when it belongs to nobody's code
    std::string broughtBy;      ///< name of the module that brought it, where that is not told by `code`
    bool always = false;        ///< counts whoever has left, such as an object left open
};

/// Names what is there of one kind: each floor of the host has its own.
using LeftoverSource = std::function<void(std::vector<Leftover>&)>;

} // namespace kthost
