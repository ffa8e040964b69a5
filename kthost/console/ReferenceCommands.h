#pragma once

namespace kthost {

class Session;
class Words;

/// Commands that edit block references. Each throws CommandError when it cannot be done.
void runInsert(Session& session, Words& words);
void runSet(Session& session, Words& words);
void runMove(Session& session, Words& words);
void runCopy(Session& session, Words& words);
void runErase(Session& session, Words& words);
void runRestore(Session& session, Words& words);

} // namespace kthost
