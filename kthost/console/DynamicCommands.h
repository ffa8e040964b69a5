#pragma once

namespace kthost {

class Session;
class Words;

/// Commands that edit dynamic block definitions and what represents them. Each throws CommandError when it
/// cannot be done.
void runAnonymous(Session& session, Words& words);
void runDynamic(Session& session, Words& words);
void runRepresent(Session& session, Words& words);

} // namespace kthost
