#pragma once

#include "tests/faults/FaultRun.h"

#include <string>

/// Where a fault leaves a trace on purpose, with the reasons. Everything else has to come right.

/// No application object could be made; that is not told to the host, and the exports fail until the module
/// is loaded again.
bool mayNeedLoadingAgain(const Fault& fault);
/// A recorded fact that one forced update does not put right.
bool mayStayAfterUpdate(const Fault& fault, const std::string& fact);
/// What is heard, when all clients have been detached and attached again.
bool mayStayAfterAttachingAnew(const Fault& fault, const std::string& fact);
bool isWithoutHook(const Fault& fault, const RunResult& result);
/// What is left behind after the module was unloaded.
bool mayBeLeft(const Fault& fault, const std::string& leftover);
