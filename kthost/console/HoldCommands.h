#pragma once

namespace kthost {

class Session;
class Words;

/// Commands that keep objects open, so that others cannot open them. Each throws CommandError when it cannot
/// be done.
void runHold(Session& session, Words& words);
void runRelease(Session& session, Words& words);

} // namespace kthost
