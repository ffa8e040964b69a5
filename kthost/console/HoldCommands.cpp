#include "kthost/console/HoldCommands.h"

#include "kthost/console/AttributeNames.h"
#include "kthost/console/Session.h"
#include "kthost/console/StatusText.h"
#include "kthost/console/Words.h"
#include "kthost/database/Database.h"

#include <string>

namespace kthost {

namespace {

struct Mode {
    KtDb::OpenMode mode;
    const char* doing;
};

Mode takeMode(Words& words) {
    if (words.takeIf(L"read")) {
        return {KtDb::kForRead, "reading"};
    }
    if (words.takeIf(L"write")) {
        return {KtDb::kForWrite, "writing"};
    }
    words.expect(L"notify");
    return {KtDb::kForNotify, "notification"};
}

KtDbObjectId takeObject(Session& session, Words& words) {
    if (words.takeIf(L"blocks")) {
        return session.drawing().blockTableId();
    }
    if (words.takeIf(L"block")) {
        return session.block(words.take("BLOCK"));
    }
    const KtDbObjectId reference = session.reference(words.take("REF"));
    return words.atEnd() ? reference : requireAttribute(reference, words.take("TAG")).id;
}

} // namespace

void runHold(Session& session, Words& words) {
    const Mode mode = takeMode(words);
    const KtDbObjectId id = takeObject(session, words);
    words.expectEnd();
    require(session.held().hold(id, mode.mode), std::string("it cannot be opened for ") + mode.doing);
    session.say(std::string("held open for ") + mode.doing);
}

void runRelease(Session& session, Words& words) {
    words.expectEnd();
    const std::size_t count = session.held().releaseAll();
    session.say("closed " + std::to_string(count) + (count == 1 ? " opening" : " openings"));
}

} // namespace kthost
