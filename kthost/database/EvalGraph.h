#pragma once

#include "kthost/database/DatabaseObject.h"

#include <KtDbEvalGraph.h>

namespace kthost {

class EvalGraph final : public DatabaseObject<KtDbEvalGraph> {};

} // namespace kthost
