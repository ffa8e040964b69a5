#pragma once

#include "kthost/database/UndoStep.h"

#include <OrbxErrorStatus.h>

namespace kthost {

/// Why the step cannot be played: an object that it opens is open. eOk when it can.
Orbx::ErrorStatus refusalToPlay(const UndoStep& step);
/// Takes one change back or does it again, with its notifications; the record serves the other direction
/// then.
void playRecord(UndoRecord& record, bool backwards);

} // namespace kthost
