#pragma once

namespace kthost {

class Session;
class Words;

/// Commands that load and unload modules. Each throws CommandError when it cannot be done.
void runLoad(Session& session, Words& words);
void runUnload(Session& session, Words& words);

} // namespace kthost
