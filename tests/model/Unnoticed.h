#pragma once

#include "kthost/audit/Trace.h"
#include "kthost/runtime/Faults.h"

#include <utility>

namespace ktmodel {

/// While it lives, what the model asks of the host is not counted, does not run into faults that are meant
/// for the module, and is not traced.
class Unnoticed {
public:
    Unnoticed() { kthost::Faults::instance().reset(); }

    Unnoticed(const Unnoticed&) = delete;
    Unnoticed& operator=(const Unnoticed&) = delete;

    ~Unnoticed() {
        kthost::Faults::instance() = faults_;
        kthost::detail::traceOpen = tracing_;
    }

private:
    kthost::Faults faults_ = kthost::Faults::instance();
    bool tracing_ = std::exchange(kthost::detail::traceOpen, false);
};

} // namespace ktmodel
