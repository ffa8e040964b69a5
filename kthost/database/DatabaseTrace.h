#pragma once

#include "kthost/audit/Trace.h"
#include "kthost/runtime/Faults.h"

#include <KtDbObjectId.h>

namespace kthost {

/// One line for a call that is about one object; gives the status on.
inline Orbx::ErrorStatus traceCall(const char* event, KtDbObjectId id, Orbx::ErrorStatus status) {
    if (tracing()) {
        TraceLine(event).field("id", id).field("status", status);
    }
    return status;
}

/// The start of a host call that is about one object: the status to fail with, if a fault is armed, which is
/// traced; eOk to go on.
inline Orbx::ErrorStatus beginCall(HostCall call, const char* event, KtDbObjectId id) {
    const Orbx::ErrorStatus status = Faults::instance().next(call);
    return status == Orbx::eOk ? status : traceCall(event, id, status);
}

} // namespace kthost
