#pragma once

namespace kthost {

class Session;
class Words;

/// The command that draws tables. Throws CommandError when it cannot be done.
void runTable(Session& session, Words& words);

} // namespace kthost
