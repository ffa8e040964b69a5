#pragma once

namespace kthost {

class Session;
class Words;

/// Commands on external drawings. Each throws CommandError when it cannot be done.
void runAttach(Session& session, Words& words);
void runDetach(Session& session, Words& words);
void runReload(Session& session, Words& words);

} // namespace kthost
