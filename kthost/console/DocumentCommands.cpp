#include "kthost/console/DocumentCommands.h"

#include "kthost/console/DrawingFile.h"
#include "kthost/console/ObjectNames.h"
#include "kthost/console/Session.h"
#include "kthost/console/Words.h"
#include "kthost/database/Database.h"
#include "kthost/database/DatabaseQueries.h"
#include "kthost/documents/Host.h"
#include "kthost/reader/PathText.h"
#include "kthost/runtime/Utf8.h"

#include <memory>
#include <utility>

namespace kthost {

namespace {

/// The file's name without its ending, with a number behind it if a document has it already.
std::wstring freeName(const DocumentManager& documents, const std::wstring& stem) {
    std::wstring name = stem;
    for (int number = 2; documents.find(name) != nullptr; ++number) {
        name = stem + L" (" + std::to_wstring(number) + L")";
    }
    return name;
}

std::string countText(std::size_t count, const char* what) {
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

std::string describe(const Database& database) {
    const std::vector<KtDbObjectId> references = allReferences(database);
    std::size_t attributes = 0;
    for (const KtDbObjectId reference : references) {
        attributes += attributesOf(reference).size();
    }
    return countText(records(database, false).size(), "block") + ", " +
           countText(references.size(), "reference") + ", " + countText(attributes, "attribute");
}

Document& documentNamed(Session& session, const std::wstring& name) {
    Document* document = session.host().documents().find(name);
    if (document == nullptr) {
        throw CommandError("there is no document '" + toUtf8(name) + "'");
    }
    return *document;
}

std::wstring takeFreeName(Session& session, Words& words) {
    const std::wstring& name = words.take("NAME");
    if (name.empty() || session.host().documents().find(name) != nullptr) {
        throw CommandError("'" + toUtf8(name) + "' cannot be the name of a new document");
    }
    return name;
}

} // namespace

void runOpen(Session& session, Words& words) {
    const std::filesystem::path file = words.takePath("FILE");
    words.expectEnd();
    DocumentManager& documents = session.host().documents();
    const std::wstring name = freeName(documents, pathText(file.stem()));
    std::unique_ptr<Database> database = readDrawing(file, name, session.progress());
    const std::string contents = describe(*database);
    documents.create(name, std::move(database));
    session.say("opened " + toUtf8(name) + ": " + contents);
}

void runNew(Session& session, Words& words) {
    const std::wstring name = takeFreeName(session, words);
    const bool isBare = words.takeIf(L"without");
    if (isBare) {
        words.expect(L"drawing");
    }
    words.expectEnd();
    session.host().documents().create(name, isBare ? nullptr : std::make_unique<Database>(name));
    session.say("opened " + toUtf8(name) + (isBare ? ", without a drawing" : ", empty"));
}

void runAbandon(Session& session, Words& words) {
    const std::wstring name = takeFreeName(session, words);
    words.expectEnd();
    if (session.isTogether()) {
        throw CommandError("a document cannot be given up while a command runs");
    }
    DocumentManager& documents = session.host().documents();
    Document& document = documents.prepare(name, std::make_unique<Database>(name));
    documents.announce(document);
    if (const HostResult result = documents.cancelCreation(document); !result) {
        throw CommandError(result.reason);
    }
    session.say("gave up " + toUtf8(name));
}

void runCurrent(Session& session, Words& words) {
    Document& document = documentNamed(session, words.take("NAME"));
    words.expectEnd();
    session.host().documents().setCurrent(&document);
    session.say("current: " + toUtf8(document.name()));
}

void runClose(Session& session, Words& words) {
    Document& document = words.atEnd() ? session.document() : documentNamed(session, words.take("NAME"));
    words.expectEnd();
    const std::string name = toUtf8(document.name());
    session.held().releaseOf(document.database());
    if (const HostResult result = session.host().documents().close(document); !result) {
        throw CommandError(result.reason);
    }
    session.say("closed " + name);
}

} // namespace kthost
