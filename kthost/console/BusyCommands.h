#pragma once

namespace kthost {

class Session;
class Words;

/// Commands that keep the host or a document from being idle, or no longer. Each throws CommandError when it
/// cannot be done.
void runTyping(Session& session, Words& words);
void runDialog(Session& session, Words& words);
void runPending(Session& session, Words& words);
void runLock(Session& session, Words& words);
void runUnlock(Session& session, Words& words);

} // namespace kthost
