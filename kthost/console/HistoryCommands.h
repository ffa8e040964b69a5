#pragma once

namespace kthost {

class Session;
class Words;

/// Commands that walk the undo steps. Each throws CommandError when it cannot be done.
void runUndo(Session& session, Words& words);
void runRedo(Session& session, Words& words);

} // namespace kthost
