#pragma once

#include <OrbxErrorStatus.h>

class KtDbObject;

namespace kthost {

/// Ends an opening for write and puts the object back to what it was when it was opened: `cancelled` and
/// object-closed are sent, not modified. What was appended to the object stays. eNotOpenForWrite when it is
/// not open for write.
Orbx::ErrorStatus cancelOpening(KtDbObject& object);

} // namespace kthost
