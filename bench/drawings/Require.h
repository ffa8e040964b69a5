#pragma once

#include <OrbxErrorStatus.h>

#include <stdexcept>
#include <string>

namespace bench {

/// What is measured has to be what was meant: anything that does not succeed ends the program.
inline void require(Orbx::ErrorStatus status) {
    if (status != Orbx::eOk) {
        throw std::runtime_error("the host says " + std::to_string(static_cast<int>(status)));
    }
}

inline void require(bool holds, const char* what) {
    if (!holds) {
        throw std::runtime_error(what);
    }
}

} // namespace bench
