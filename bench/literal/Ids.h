#pragma once

#include <KtArray.h>
#include <KtDbObjectId.h>
#include <KtRxCallback.h>

#include <map>
#include <memory>
#include <set>

namespace bench::literal {

using IdArray = KtArray<KtDbObjectId>;
using IdSet = std::set<KtDbObjectId>;
using IdLists = std::map<KtDbObjectId, std::unique_ptr<IdArray>>;
using Callbacks = std::set<KtRxCallback>;

/// Every array begins so.
inline std::unique_ptr<IdArray> newIdArray() {
    return std::make_unique<IdArray>(0, 8);
}

} // namespace bench::literal
