#include "kthost/console/HostCommands.h"

#include "kthost/console/DefinitionCommands.h"
#include "kthost/console/DocumentCommands.h"
#include "kthost/console/ExternalCommands.h"
#include "kthost/console/HistoryCommands.h"
#include "kthost/console/ListCommand.h"
#include "kthost/console/ModuleCommands.h"
#include "kthost/console/ReferenceCommands.h"
#include "kthost/console/SessionCommands.h"
#include "kthost/console/TableCommand.h"

#include <algorithm>

namespace kthost {

namespace {

constexpr HostCommand kCommands[] = {
    {L"open", L"open FILE", "open a schematic in a document of its own, named after the file", runOpen},
    {L"new", L"new NAME", "open an empty drawing", runNew},
    {L"current", L"current NAME", "make another document the current one", runCurrent},
    {L"close", L"close [NAME]", "close a document, the current one if none is named", runClose},
    {L"load", L"load FILE", "load a module", runLoad},
    {L"unload", L"unload NAME", "unload a module and audit what it leaves behind", runUnload},
    {L"list", L"list blocks|references|layouts|attributes|tables|documents|modules [NAME]",
     "list the drawing's blocks, references (to block NAME), layouts, attributes (of reference NAME) or "
     "tables",
     runList},
    {L"insert", L"insert BLOCK X,Y [unit N] [in CONTAINER] [TAG=TEXT...]",
     "place a block; a unit that no record represents yet gets one", runInsert},
    {L"set", L"set REF TAG TEXT", "change an attribute", runSet},
    {L"move", L"move REF X,Y", "move a reference", runMove},
    {L"copy", L"copy REF X,Y", "copy a reference with its attributes", runCopy},
    {L"erase", L"erase REF", "erase a reference", runErase},
    {L"restore", L"restore REF", "bring an erased reference back", runRestore},
    {L"define", L"define BLOCK [from BLOCK]", "make a block, empty or as a copy", runDefine},
    {L"purge", L"purge BLOCK", "erase a block that nothing refers to", runPurge},
    {L"attach", L"attach FILE as NAME", "attach a schematic as an external drawing", runAttach},
    {L"detach", L"detach NAME", "take an external drawing away, and the references to it", runDetach},
    {L"reload", L"reload NAME", "read an external drawing again", runReload},
    {L"table", L"table NAME X,Y ROWS COLS [in CONTAINER]", "draw an empty table", runTable},
    {L"undo", L"undo [N]", "take the latest N commands back", runUndo},
    {L"redo", L"redo [N]", "do N commands again", runRedo},
    {L"typing", L"typing on|off", "input waits, or no longer", runTyping},
    {L"tick", L"tick MS", "the clock is so many milliseconds later", runTick},
    {L"help", L"help [COMMAND]", "list the commands", runHelp},
    {L"quit", L"quit", "end the host", runQuit},
};

} // namespace

std::span<const HostCommand> hostCommands() {
    return kCommands;
}

const HostCommand* findHostCommand(std::wstring_view name) {
    const auto found = std::find_if(std::begin(kCommands), std::end(kCommands),
                                    [name](const HostCommand& command) { return command.name == name; });
    return found == std::end(kCommands) ? nullptr : found;
}

} // namespace kthost
