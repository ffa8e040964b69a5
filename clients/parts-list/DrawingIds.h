#pragma once

#include <KtDbObjectId.h>

#include <string>
#include <vector>

class KtDbDatabase;

namespace parts {

/// Ids of the drawing's living block table records, in table order, layouts included. Throws
/// InUse.
std::vector<KtDbObjectId> listRecords(const KtDbDatabase& database);

/// Whether these are what `listRecords` would give. Throws InUse.
bool hasRecords(const KtDbDatabase& database, const std::vector<KtDbObjectId>& records);

/// Id of the living record of that name; null when there is none. Throws InUse.
KtDbObjectId findRecord(const KtDbDatabase& database, const std::wstring& name);

/// The records through which references to these definitions are placed: each itself and, behind it, the
/// living representations of a dynamic one. Erased definitions and repetitions are left out.
std::vector<KtDbObjectId> withRepresentations(const std::vector<KtDbObjectId>& definitions);

/// Name of a record; empty when it is erased. Throws InUse.
std::wstring recordName(KtDbObjectId record);

} // namespace parts
