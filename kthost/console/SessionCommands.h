#pragma once

namespace kthost {

class Session;
class Words;

/// Commands on the host itself. Each throws CommandError when it cannot be done.
void runTick(Session& session, Words& words);
void runHelp(Session& session, Words& words);
void runQuit(Session& session, Words& words);

} // namespace kthost
