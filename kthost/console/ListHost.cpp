#include "kthost/console/ListRows.h"

#include "kthost/console/ObjectNames.h"
#include "kthost/console/Session.h"
#include "kthost/database/Database.h"
#include "kthost/database/DatabaseQueries.h"
#include "kthost/documents/Host.h"
#include "kthost/runtime/Utf8.h"

namespace kthost {

namespace {

std::string contentsText(const Document& document) {
    KtDbDatabase* database = document.database();
    return database == nullptr
               ? "no drawing"
               : std::to_string(allReferences(hostDatabase(*database)).size()) + " references";
}

} // namespace

ListRows listDocuments(Session& session, const std::wstring& name) {
    const DocumentManager& documents = session.host().documents();
    ListRows rows{{"Document", "Drawing", ""}};
    for (const Document* document : documents.documents()) {
        if (name.empty() || name == document->name()) {
            rows.push_back({toUtf8(document->name()), contentsText(*document),
                            document == documents.currentDocument() ? "current" : ""});
        }
    }
    return rows;
}

ListRows listModules(Session& session, const std::wstring& name) {
    ListRows rows{{"Module", "Documents"}};
    for (const auto& module : session.host().modules().modules()) {
        if (name.empty() || toUtf8(name) == module->name()) {
            rows.push_back({module->name(), module->isMdiAware() ? "several" : "one"});
        }
    }
    return rows;
}

} // namespace kthost
