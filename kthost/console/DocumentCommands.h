#pragma once

namespace kthost {

class Session;
class Words;

/// Commands that open, choose and close documents. Each throws CommandError when it cannot be done.
void runOpen(Session& session, Words& words);
void runNew(Session& session, Words& words);
void runAbandon(Session& session, Words& words);
void runCurrent(Session& session, Words& words);
void runClose(Session& session, Words& words);

} // namespace kthost
