#pragma once

#include <KtArray.h>
#include <KtDbObjectId.h>

#include "notify/OrderedMap.h"

#include <memory>

using KtDbObjectIdArray = KtArray<KtDbObjectId>;

/// References of one block by the record that holds them, each list in ascending order of id.
using RecordedReferences = OrderedMap<KtDbObjectId, std::unique_ptr<KtDbObjectIdArray>>;
