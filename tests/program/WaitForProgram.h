#pragma once

#include "tests/program/RunProgram.h"

namespace program {

/// The system's part of run(): gives the exit status.
int waitForProgram(const std::filesystem::path& program, const std::filesystem::path& folder,
                   const Given& given);

} // namespace program
