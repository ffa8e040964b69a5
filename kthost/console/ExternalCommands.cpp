#include "kthost/console/ExternalCommands.h"

#include "kthost/console/DrawingFile.h"
#include "kthost/console/Session.h"
#include "kthost/console/StatusText.h"
#include "kthost/console/Words.h"
#include "kthost/database/Database.h"
#include "kthost/database/DatabaseQueries.h"
#include "kthost/database/ExternalReferences.h"
#include "kthost/reader/PathText.h"
#include "kthost/runtime/Utf8.h"

#include <filesystem>
#include <memory>

namespace kthost {

namespace {

/// Why the latest drawing could not be read. The loader has no way to say it.
std::string& lastReadFailure() {
    static std::string text;
    return text;
}

DrawingLoader loaderOf(const std::filesystem::path& file, const std::wstring& name, ReadProgress* progress) {
    return [file, name, progress]() -> std::unique_ptr<Database> {
        try {
            return readDrawing(file, name, progress);
        } catch (const CommandError& error) {
            lastReadFailure() = error.what();
            return nullptr;
        }
    };
}

void requireRead(Orbx::ErrorStatus status, const std::string& what) {
    if (status == Orbx::eFileAccess) {
        throw CommandError(lastReadFailure());
    }
    require(status, what);
}

} // namespace

void runAttach(Session& session, Words& words) {
    const std::filesystem::path file = words.takeWholePath("FILE");
    words.expect(L"as");
    const std::wstring name = words.take("NAME");
    words.expectEnd();
    session.edit(L"attach", [&](Database& database) {
        KtDbObjectId record;
        requireRead(attachDrawing(database, name, loaderOf(file, name, session.progress()), record),
                    "'" + toUtf8(name) + "' cannot be attached");
    });
    session.say("attached " + toUtf8(pathText(file.filename())) + " as " + toUtf8(name));
}

void runDetach(Session& session, Words& words) {
    const KtDbObjectId record = session.block(words.take("NAME"));
    words.expectEnd();
    const std::string name = toUtf8(recordName(record));
    session.edit(L"detach", [&](Database& database) {
        require(detachDrawing(database, record), "'" + name + "' cannot be detached");
    });
    session.say("detached " + name);
}

void runReload(Session& session, Words& words) {
    const KtDbObjectId record = session.block(words.take("NAME"));
    const std::wstring wideName(recordName(record));
    const std::string name = toUtf8(wideName);
    DrawingLoader loader;
    if (words.takeIf(L"from")) {
        loader = loaderOf(words.takeWholePath("FILE"), wideName, session.progress());
    }
    words.expectEnd();
    session.edit(L"reload", [&](Database& database) {
        requireRead(loader ? reloadDrawing(database, record, loader) : reloadDrawing(database, record),
                    "'" + name + "' cannot be reloaded");
    });
    session.say("reloaded " + name);
}

} // namespace kthost
