#pragma once

#include <KtEd.h>

#include "kthost/documents/CommandOutcome.h"

#include <functional>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kthost {

class Document;
class DocumentManager;

/// A command that a module brought.
struct ModuleCommand {
    ModuleCommand(std::wstring theName, std::wstring theUsage, KtEdCommandFunction theFunction)
        : name(std::move(theName)),
          usage(std::move(theUsage)),
          function(theFunction) {}

    std::wstring name;
    std::wstring usage;
    KtEdCommandFunction function;
};

/// The commands that modules brought, by name. One at a time in a process.
class CommandRegistry {
public:
    CommandRegistry();
    CommandRegistry(const CommandRegistry&) = delete;
    CommandRegistry& operator=(const CommandRegistry&) = delete;
    ~CommandRegistry();

    static CommandRegistry* current();

    /// Takes a name that no module may bring, such as that of a command of the host's own.
    void reserve(std::wstring_view name);

    /// False for a name that is empty or taken, and for a null function.
    bool add(const wchar_t* name, const wchar_t* usage, KtEdCommandFunction function);
    bool remove(std::wstring_view name);
    /// Drops those whose function lies where `leaves(address)` is true.
    void removeWhere(const std::function<bool(const void*)>& leaves);

    /// Null when no module brought it. Valid until the command is removed.
    const ModuleCommand* find(std::wstring_view name) const;

    /// In the order of their names.
    const std::map<std::wstring, ModuleCommand, std::less<>>& commands() const { return commands_; }

private:
    std::map<std::wstring, ModuleCommand, std::less<>> commands_;
    std::set<std::wstring> reserved_;
};

/// Calls a module's command, which becomes part of the command that is running.
CommandResult callModuleCommand(Document& document, const ModuleCommand& command,
                                const std::vector<std::wstring>& words);

/// Runs a module's command in a document, as any command of the host runs. A command that failed without
/// giving a reason gets one.
CommandOutcome runModuleCommand(DocumentManager& documents, Document& document, const ModuleCommand& command,
                                const std::vector<std::wstring>& words);

} // namespace kthost
