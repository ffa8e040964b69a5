#include <KtDbTable.h>

#include "kthost/database/Appending.h"
#include "kthost/database/Changes.h"
#include "kthost/database/Database.h"
#include "kthost/database/DatabaseTrace.h"
#include "kthost/database/Definitions.h"
#include "kthost/database/RecordChecks.h"
#include "kthost/database/WriteOpening.h"

namespace kthost {

namespace {

Orbx::ErrorStatus refusalToDraw(const DatabaseContents& contents, KtDbObjectId container, std::uint32_t rows,
                                std::uint32_t columns) {
    if (std::uint64_t{rows} * columns > Table::kMaxCells) {
        return Orbx::eInvalidInput;
    }
    Orbx::ErrorStatus refusal = refusalToChangeRecord(contents, container);
    refusal = refusal == Orbx::eOk ? refusalToWrite(container) : refusal;
    return refusal == Orbx::eOk ? refusalToWrite(contents.blockTable) : refusal;
}

Orbx::ErrorStatus createTable(Database& database, KtDbObjectId container, const KtGePoint3d& position,
                              std::uint32_t rows, std::uint32_t columns, KtDbObjectId& table) {
    DatabaseContents& contents = database.contents();
    Orbx::ErrorStatus status = refusalToDraw(contents, container, rows, columns);
    KtDbObjectId record;
    status = status == Orbx::eOk ? addAnonymousDefinition(database, L'T', record) : status;
    if (status != Orbx::eOk) {
        return status;
    }
    WriteOpening opening(container);
    if (opening.status() == Orbx::eOk) {
        static_cast<void>(beginChange(container)); // it is open for write
        TableState state{position, rows, columns, std::vector<std::wstring>(std::size_t{rows} * columns)};
        table =
            appendReferenceTo<Table>(contents, *peek<BlockTableRecord>(container), record, std::move(state));
        opening.close();
    }
    return opening.status();
}

} // namespace

} // namespace kthost

Orbx::ErrorStatus ktdbCreateTable(KtDbDatabase* database, KtDbObjectId container, const KtGePoint3d& position,
                                  std::uint32_t rows, std::uint32_t columns, KtDbObjectId& table) {
    table = KtDbObjectId();
    Orbx::ErrorStatus status = kthost::Faults::instance().next(kthost::HostCall::createTable);
    if (status == Orbx::eOk && database == nullptr) {
        status = Orbx::eInvalidInput;
    }
    if (status == Orbx::eOk) {
        status =
            kthost::createTable(kthost::hostDatabase(*database), container, position, rows, columns, table);
    }
    return kthost::traceCall("createTable", table, status);
}
