#include "bench/workloads/Workloads.h"

namespace bench {

void planAll(Plan& plan, Scale scale) {
    planReferences(plan, scale);
}

} // namespace bench
