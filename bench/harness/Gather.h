#pragma once

#include "bench/harness/Figures.h"
#include "bench/harness/Plan.h"
#include "bench/harness/Sample.h"

namespace bench {

/// Adds a sample to the figure that it belongs to, a new one if there is none.
void gather(const Plan& plan, const Sample& sample, Figures& figures);

} // namespace bench
