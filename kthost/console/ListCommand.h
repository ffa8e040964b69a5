#pragma once

namespace kthost {

class Session;
class Words;

/// The command that lists what is there. Throws CommandError when it cannot be done.
void runList(Session& session, Words& words);

} // namespace kthost
