#pragma once

namespace kthost {

class Session;
class Words;

/// Commands on what a drawing keeps for undo. Each throws CommandError when it cannot be done.
void runUndo(Session& session, Words& words);
void runRedo(Session& session, Words& words);
void runRecording(Session& session, Words& words);
void runForget(Session& session, Words& words);

} // namespace kthost
