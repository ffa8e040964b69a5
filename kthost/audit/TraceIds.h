#pragma once

#include <KtDbObjectId.h>

#include <cstdint>
#include <functional>
#include <string>

namespace kthost {

/// What a trace says about an id beside its value.
struct TracedObject {
    std::wstring className;   ///< empty when the id has no object any more
    std::uint64_t handle = 0; ///< 0 when the object has none
    std::wstring name;        ///< empty when the object has none
};

/// The trace knows nothing of drawings: whoever keeps the objects says how an id reads. An empty function
/// takes it back.
void setTraceIdDescriber(std::function<TracedObject(KtDbObjectId)> describer);

} // namespace kthost
