#pragma once

#include <span>
#include <string_view>

namespace kthost {

class Session;
class Words;

/// A command of the host's own.
struct HostCommand {
    const wchar_t* name;
    const wchar_t* usage;
    const char* summary; ///< UTF-8
    /// Throws CommandError when it cannot be done.
    void (*run)(Session& session, Words& words);
};

/// In the order in which `help` shows them.
std::span<const HostCommand> hostCommands();

/// Null when there is none of that name.
const HostCommand* findHostCommand(std::wstring_view name);

} // namespace kthost
