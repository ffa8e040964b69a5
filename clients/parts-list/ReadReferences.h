#pragma once

#include "PlacedReference.h"

#include <vector>

namespace parts {

/// Reads the living references to these records with their attributes and designations, record by record.
/// References in a container that is itself erased are left out. Takes time proportional to what is read.
/// Throws InUse.
std::vector<PlacedReference> readReferences(const std::vector<KtDbObjectId>& records);

/// Ids of the living references to these records, record by record. Throws InUse.
std::vector<KtDbObjectId> listReferences(const std::vector<KtDbObjectId>& records);

} // namespace parts
