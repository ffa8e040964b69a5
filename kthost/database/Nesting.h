#pragma once

#include <KtDbObjectId.h>

#include <vector>

namespace kthost {

/// Counts one living reference to `definition` in `container` more or less.
void countPlacement(KtDbObjectId definition, KtDbObjectId container, int difference);

/// Whether a reference to `definition` in `container` would make a record contain itself at some depth.
/// Searches down from the one and up from the other at once and ends with the smaller side: building a deep
/// drawing from either end costs little for each reference.
bool wouldContainItself(KtDbObjectId definition, KtDbObjectId container);

/// The record and all records in which it comes to lie through living references, each once.
std::vector<KtDbObjectId> recordAndContainers(KtDbObjectId record);

} // namespace kthost
