// A library has an operator new of its own: the module under test brings one that takes orders. All its
// allocations are the module's, also those that its copy of the standard library makes for it.

#include "tests/faults/ModuleMemory.h"

#include "tests/faults_windows/observed/OwnMemory.h"

namespace modulememory {

namespace {

struct Exports {
    decltype(&ktdxFailMemory) fail = nullptr;
    decltype(&ktdxCountMemory) count = nullptr;
    decltype(&ktdxEndFailingMemory) end = nullptr;
};

Exports exports;

} // namespace

void setModule(const kthost::SharedLibrary& module) {
    exports = {reinterpret_cast<decltype(exports.fail)>(module.symbol("ktdxFailMemory")),
               reinterpret_cast<decltype(exports.count)>(module.symbol("ktdxCountMemory")),
               reinterpret_cast<decltype(exports.end)>(module.symbol("ktdxEndFailingMemory"))};
}

Failing::Failing(std::size_t k, bool andAllAfter) {
    exports.fail(k, andAllAfter);
}

Failing::~Failing() {
    exports.end();
}

std::size_t Failing::count() {
    return exports.count();
}

} // namespace modulememory
