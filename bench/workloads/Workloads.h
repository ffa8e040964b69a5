#pragma once

#include "bench/harness/Plan.h"

#include <cstddef>
#include <cstdint>

namespace bench {

/// `quick` takes less than two minutes for everything.
enum class Scale : std::uint8_t { full, quick };

/// 5, or 2 when it has to be quick.
inline std::size_t repetitionsOf(Scale scale) {
    return scale == Scale::full ? 5 : 2;
}

/// Everything that is measured.
void planAll(Plan& plan, Scale scale);

// A file each:
void planReferences(Plan& plan, Scale scale);
void planGraphs(Plan& plan, Scale scale);
void planIdleChecks(Plan& plan, Scale scale);
void planTables(Plan& plan, Scale scale);
void planTemplates(Plan& plan, Scale scale);
void planPartsLists(Plan& plan, Scale scale);

} // namespace bench
