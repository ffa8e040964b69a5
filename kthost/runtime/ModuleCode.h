#pragma once

#include "kthost/runtime/HostResult.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace kthost {

/// What of the modules' code is on the stack. What it stands on, a document or the module itself, is not to
/// be pulled from under it. User-interface thread only.
enum class ModuleCodeKind : std::uint8_t {
    entryPoint,
    filter,
    callback,
    command,
    notification,
};

/// Marks module code as running from its construction to its destruction. `name` has to outlive it.
class ModuleCodeScope {
public:
    ModuleCodeScope(ModuleCodeKind kind, std::string_view name);
    ModuleCodeScope(const ModuleCodeScope&) = delete;
    ModuleCodeScope& operator=(const ModuleCodeScope&) = delete;
    ~ModuleCodeScope();

    /// The innermost one; null when no module code runs.
    static const ModuleCodeScope* innermost();

    /// Such as "the command set".
    std::string text() const;

private:
    ModuleCodeKind kind_;
    std::string_view name_;
    const ModuleCodeScope* outer_;
};

/// eNotNow while module code runs: `what` is "plan cannot be closed", the reason goes on with "while the
/// command set is running".
HostResult refuseWhileModuleCodeRuns(std::string_view what);

} // namespace kthost
