#pragma once

namespace kthost {

class Session;
class Words;

/// Runs several lines as one command. Throws CommandError when one of them cannot be done: the drawing in
/// which the command began is then as it was before, while what the lines did to other documents stays.
void runTogether(Session& session, Words& words);

} // namespace kthost
