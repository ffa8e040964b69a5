#pragma once

namespace kthost {

/// Has the trace show class, handle and name beside every id.
void describeIdsInTrace();

} // namespace kthost
