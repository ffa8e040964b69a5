#pragma once

#include "tests/model/Snapshot.h"

#include <KtApDocument.h>
#include <KtRxCallback.h>

#include <map>
#include <string>
#include <vector>

namespace ktmodel {

/// A callback's address is its number.
CallbackNumber numberOf(KtRxCallback callback);

/// What the module, linked into this program, has recorded, and its answers to the questions. Idle checks and
/// calls are left out. Empty while the module is not initialised.
Snapshot observe(const std::map<std::wstring, std::vector<GraphQuestion>>& questions = {});

/// Whether the module's block table monitor has its timer before that of the document's idle clients.
bool blocksTimerIsFirst(KtApDocument& document);

} // namespace ktmodel
