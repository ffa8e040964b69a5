#include "tests/faults_windows/observed/OwnMemory.h"

#include "tests/support/FailingAllocation.h"

#include <optional>

namespace {

std::optional<FailingFiltered> order;

bool isAny(const void* /*caller*/) {
    return true;
}

} // namespace

void ktdxFailMemory(std::size_t k, bool andAllAfter) {
    order.emplace(&isAny, k, andAllAfter);
}

std::size_t ktdxCountMemory() {
    return FailingFiltered::count();
}

void ktdxEndFailingMemory() {
    order.reset();
}
