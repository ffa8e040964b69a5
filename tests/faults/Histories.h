#pragma once

#include "tests/faults/Stage.h"

#include <vector>

/// Something that happens to drawings while the module is there. Small, and together they come by everything
/// that the module does.
struct History {
    const char* name;
    /// Makes documents and drawings, without the module.
    void (*prepare)(Stage& stage);
    /// The module is loaded already.
    void (*play)(Stage& stage);
};

const std::vector<History>& histories();
