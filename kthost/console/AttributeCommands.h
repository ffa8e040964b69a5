#pragma once

namespace kthost {

class Session;
class Words;

/// Commands on what belongs to a reference. Each throws CommandError when it cannot be done.
void runAttribute(Session& session, Words& words);
void runXData(Session& session, Words& words);

} // namespace kthost
