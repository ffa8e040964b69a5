#include "kthost/reader/RequireStatus.h"

#include <stdexcept>
#include <string>

namespace kthost {

void require(Orbx::ErrorStatus status, const char* action) {
    if (status != Orbx::eOk) {
        throw std::runtime_error(std::string("the host could not ") + action + ": status " +
                                 std::to_string(static_cast<int>(status)));
    }
}

} // namespace kthost
