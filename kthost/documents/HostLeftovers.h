#pragma once

#include "kthost/audit/Leftovers.h"

#include <vector>

/// What modules can leave behind, one kind a function; each appends to the list. Looking at the reactors of
/// drawings reads the reactors themselves, so the modules that brought them have to be in memory.
namespace kthost {

class CallbackLedger;
class CommandRegistry;
class DocumentManager;
class MessageLoop;
class SystemRegistry;

void addOpenObjects(std::vector<Leftover>& leftovers);
void addObjectReactors(std::vector<Leftover>& leftovers);
void addManagerReactors(const DocumentManager& documents, std::vector<Leftover>& leftovers);
void addFilters(const MessageLoop& loop, std::vector<Leftover>& leftovers);
void addCommands(const CommandRegistry& commands, std::vector<Leftover>& leftovers);
void addRegistryEntries(SystemRegistry& registry, std::vector<Leftover>& leftovers);
void addCallbacks(const CallbackLedger& callbacks, std::vector<Leftover>& leftovers);

/// The first two, for drawings that no open document holds (any more).
void addOpenObjectsWithoutDocument(const DocumentManager& documents, std::vector<Leftover>& leftovers);
void addObjectReactorsWithoutDocument(const DocumentManager& documents, std::vector<Leftover>& leftovers);

} // namespace kthost
