#include "bench/workloads/Workloads.h"

namespace bench {

void planAll(Plan& plan, Scale scale) {
    planReferences(plan, scale);
    planGraphs(plan, scale);
    planIdleChecks(plan, scale);
    planTables(plan, scale);
    planTemplates(plan, scale);
    planPartsLists(plan, scale);
}

} // namespace bench
