#include "kthost/console/HostCommands.h"

#include "kthost/console/AttributeCommands.h"
#include "kthost/console/BusyCommands.h"
#include "kthost/console/DefinitionCommands.h"
#include "kthost/console/DocumentCommands.h"
#include "kthost/console/DynamicCommands.h"
#include "kthost/console/ExternalCommands.h"
#include "kthost/console/HistoryCommands.h"
#include "kthost/console/HoldCommands.h"
#include "kthost/console/ListCommand.h"
#include "kthost/console/ModuleCommands.h"
#include "kthost/console/ReferenceCommands.h"
#include "kthost/console/SessionCommands.h"
#include "kthost/console/TableCommand.h"
#include "kthost/console/TogetherCommand.h"

#include <algorithm>

namespace kthost {

namespace {

constexpr HostCommand kCommands[] = {
    {L"open", L"open FILE", "open a schematic in a document of its own, named after the file", runOpen},
    {L"new", L"new NAME [without drawing]", "open an empty drawing, or a document that has none", runNew},
    {L"abandon", L"abandon NAME", "announce a new drawing and give it up again", runAbandon},
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
    {L"erase", L"erase REF [TAG]", "erase a reference, or one of its attributes", runErase},
    {L"restore", L"restore REF [TAG]", "bring an erased reference or attribute back", runRestore},
    {L"attribute", L"attribute REF TAG TEXT", "give a reference one more attribute", runAttribute},
    {L"xdata", L"xdata REF APPLICATION [TEXT...]",
     "set the extended data that an application keeps with a reference, or take it away", runXData},
    {L"define", L"define BLOCK [from BLOCK]", "make a block, empty or as a copy", runDefine},
    {L"redefine", L"redefine BLOCK [as BLOCK]", "empty a block, or fill it with what lies in another",
     runRedefine},
    {L"rename", L"rename BLOCK NAME", "give a block another name", runRename},
    {L"layout", L"layout NAME", "make an empty layout", runLayout},
    {L"anonymous", L"anonymous LETTER", "make an empty anonymous block", runAnonymous},
    {L"dynamic", L"dynamic BLOCK", "make a block dynamic", runDynamic},
    {L"represent", L"represent BLOCK LABEL [by ANONYMOUS]",
     "have a new anonymous block, or one that is there, represent a dynamic block", runRepresent},
    {L"purge", L"purge BLOCK", "erase a block that nothing refers to", runPurge},
    {L"attach", L"attach FILE as NAME", "attach a schematic as an external drawing", runAttach},
    {L"detach", L"detach NAME", "take an external drawing away, and the references to it", runDetach},
    {L"reload", L"reload NAME [from FILE]", "read an external drawing again, or another in its place",
     runReload},
    {L"table", L"table NAME X,Y ROWS COLS [in CONTAINER]", "draw an empty table", runTable},
    {L"undo", L"undo [N]", "take the latest N commands back", runUndo},
    {L"redo", L"redo [N]", "do N commands again", runRedo},
    {L"recording", L"recording on|off", "the drawing keeps changes for undo, or no longer", runRecording},
    {L"forget", L"forget", "forget what can be undone, and let go of what is erased", runForget},
    {L"together", L"together LINE...", "run several lines, each one word in quotes, as one command",
     runTogether},
    {L"hold", L"hold read|write|notify REF [TAG]|block BLOCK|blocks",
     "keep a reference, an attribute, a block or the table of blocks open", runHold},
    {L"release", L"release", "close what is kept open", runRelease},
    {L"lock", L"lock [elsewhere]", "lock the document outside a command, or from another context", runLock},
    {L"unlock", L"unlock", "give the latest lock back", runUnlock},
    {L"dialog", L"dialog on|off", "a dialog of the document is open, or no longer", runDialog},
    {L"pending", L"pending N", "so many inputs wait for the document's commands", runPending},
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
