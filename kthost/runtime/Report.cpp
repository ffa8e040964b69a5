#include "kthost/runtime/Report.h"

#include "kthost/audit/Trace.h"

#include <cstdio>
#include <string>

namespace kthost {

void report(std::string_view line) {
    if (tracing()) {
        TraceLine("report").field("text", line);
    }
    const std::string whole = "kthost: " + std::string(line) + "\n";
    std::fwrite(whole.data(), 1, whole.size(), stderr);
}

} // namespace kthost
