#include "kthost/console/DynamicCommands.h"

#include "kthost/console/Session.h"
#include "kthost/console/StatusText.h"
#include "kthost/console/Words.h"
#include "kthost/database/DatabaseQueries.h"
#include "kthost/database/Definitions.h"
#include "kthost/database/DynamicDefinitions.h"
#include "kthost/runtime/Utf8.h"

namespace kthost {

namespace {

wchar_t takeLetter(Words& words) {
    const std::wstring& word = words.take("LETTER");
    if (word.size() != 1 || word.front() < L'A' || word.front() > L'Z') {
        throw UsageError("LETTER has to be one from A to Z, not '" + toUtf8(word) + "'");
    }
    return word.front();
}

} // namespace

void runAnonymous(Session& session, Words& words) {
    const wchar_t letter = takeLetter(words);
    words.expectEnd();
    KtDbObjectId made;
    session.edit(L"anonymous", [&](Database& database) {
        require(addAnonymousDefinition(database, letter, made), "no anonymous block can be made");
    });
    session.say("defined " + toUtf8(recordName(made)));
}

void runDynamic(Session& session, Words& words) {
    const KtDbObjectId block = session.block(words.take("BLOCK"));
    words.expectEnd();
    const std::string name = toUtf8(recordName(block));
    session.edit(L"dynamic", [&](Database& database) {
        require(makeDynamic(database, block), "'" + name + "' cannot be made dynamic");
    });
    session.say("made " + name + " dynamic");
}

void runRepresent(Session& session, Words& words) {
    const KtDbObjectId block = session.block(words.take("BLOCK"));
    const std::wstring label = words.take("LABEL");
    const bool adopts = words.takeIf(L"by");
    KtDbObjectId record = adopts ? session.block(words.take("ANONYMOUS")) : KtDbObjectId();
    words.expectEnd();
    const std::string name = toUtf8(recordName(block));
    session.edit(L"represent", [&](Database& database) {
        require(adopts ? adoptRepresentation(database, block, label, record)
                       : addRepresentation(database, block, label, record),
                "'" + name + "' cannot be represented");
    });
    session.say(toUtf8(recordName(record)) + " represents " + name + " as " + toUtf8(label));
}

} // namespace kthost
