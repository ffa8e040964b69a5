#include "kthost/console/ModuleCommands.h"

#include "kthost/console/Session.h"
#include "kthost/console/Words.h"
#include "kthost/documents/Host.h"
#include "kthost/reader/PathText.h"
#include "kthost/runtime/Utf8.h"

#include <cstddef>
#include <filesystem>

namespace kthost {

namespace {

void demand(const HostResult& result) {
    if (!result) {
        throw CommandError(result.reason);
    }
}

} // namespace

void runLoad(Session& session, Words& words) {
    const std::filesystem::path file = words.takeWholePath("FILE");
    words.expectEnd();
    demand(session.host().modules().load(file));
    session.say("loaded " + toUtf8(pathText(file.filename())));
}

void runUnload(Session& session, Words& words) {
    const std::string name = toUtf8(words.take("NAME"));
    words.expectEnd();
    const std::vector<std::string>& findings = session.host().report().findings;
    const std::size_t before = findings.size();
    demand(session.host().modules().unload(name));
    session.say("unloaded " + name +
                (findings.size() == before ? ", nothing left behind" : ", and it left:"));
    for (std::size_t finding = before; finding < findings.size(); ++finding) {
        session.say("  " + findings[finding]);
    }
}

} // namespace kthost
