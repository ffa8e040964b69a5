#include "kthost/console/DefinitionCommands.h"

#include "kthost/console/Session.h"
#include "kthost/console/StatusText.h"
#include "kthost/console/Words.h"
#include "kthost/database/DatabaseQueries.h"
#include "kthost/database/Definitions.h"
#include "kthost/runtime/Utf8.h"

namespace kthost {

void runDefine(Session& session, Words& words) {
    const std::wstring name = words.take("BLOCK");
    const bool isCopy = words.takeIf(L"from");
    const KtDbObjectId source = isCopy ? session.block(words.take("BLOCK")) : KtDbObjectId();
    words.expectEnd();
    session.edit(L"define", [&](Database& database) {
        KtDbObjectId made;
        require(isCopy ? copyDefinition(database, source, name, made) : addDefinition(database, name, made),
                "'" + toUtf8(name) + "' cannot be defined");
    });
    session.say("defined " + toUtf8(name) + (isCopy ? " from " + toUtf8(recordName(source)) : ""));
}

void runRedefine(Session& session, Words& words) {
    const KtDbObjectId block = session.block(words.take("BLOCK"));
    const bool isCopy = words.takeIf(L"as");
    const KtDbObjectId source = isCopy ? session.block(words.take("BLOCK")) : KtDbObjectId();
    words.expectEnd();
    const std::string name = toUtf8(recordName(block));
    session.edit(L"redefine", [&](Database& database) {
        require(redefine(database, block, source), "'" + name + "' cannot be redefined");
    });
    session.say("redefined " + name + (isCopy ? " as " + toUtf8(recordName(source)) : ""));
}

void runRename(Session& session, Words& words) {
    const KtDbObjectId block = session.block(words.take("BLOCK"));
    const std::wstring name = words.take("NAME");
    words.expectEnd();
    const std::string before = toUtf8(recordName(block));
    session.edit(L"rename", [&](Database& database) {
        require(renameDefinition(database, block, name), "'" + before + "' cannot be renamed");
    });
    session.say("renamed " + before + " to " + toUtf8(name));
}

void runLayout(Session& session, Words& words) {
    const std::wstring name = words.take("NAME");
    words.expectEnd();
    session.edit(L"layout", [&](Database& database) {
        KtDbObjectId made;
        require(addLayout(database, name, made), "'" + toUtf8(name) + "' cannot be laid out");
    });
    session.say("made the layout " + toUtf8(name));
}

void runPurge(Session& session, Words& words) {
    const KtDbObjectId block = session.block(words.take("BLOCK"));
    words.expectEnd();
    const std::string name = toUtf8(recordName(block));
    session.edit(L"purge", [&](Database& database) {
        require(purgeDefinition(database, block), "'" + name + "' cannot be purged");
    });
    session.say("purged " + name);
}

} // namespace kthost
