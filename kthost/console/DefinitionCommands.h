#pragma once

namespace kthost {

class Session;
class Words;

/// Commands that edit block definitions. Each throws CommandError when it cannot be done.
void runDefine(Session& session, Words& words);
void runRedefine(Session& session, Words& words);
void runRename(Session& session, Words& words);
void runLayout(Session& session, Words& words);
void runPurge(Session& session, Words& words);

} // namespace kthost
