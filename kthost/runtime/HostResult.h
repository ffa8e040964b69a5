#pragma once

#include <OrbxErrorStatus.h>

#include <string>

namespace kthost {

/// How an operation of the host ended. A refusal carries its reason, UTF-8, as people are to read it; nothing
/// has changed then unless the operation says otherwise.
struct [[nodiscard]] HostResult {
    Orbx::ErrorStatus status = Orbx::eOk;
    std::string reason;

    explicit operator bool() const noexcept { return status == Orbx::eOk; }
};

} // namespace kthost
