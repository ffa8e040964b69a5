#pragma once

#include "bench/literal/Blocks.h"
#include "tests/model/Snapshot.h"

#include <vector>

/// What the literal monitors have recorded, and their answers, in the form in which the module's are
/// observed. The timer is left out.
ktmodel::BlocksSnapshot observeLiteral(bench::literal::Blocks& blocks,
                                       const std::vector<ktmodel::GraphQuestion>& questions);
