#include "kthost/console/TogetherCommand.h"

#include "kthost/console/PerformLine.h"
#include "kthost/console/Session.h"
#include "kthost/console/Words.h"
#include "kthost/runtime/Utf8.h"

#include <string>
#include <vector>

namespace kthost {

void runTogether(Session& session, Words& words) {
    std::vector<std::string> lines;
    do {
        lines.push_back(toUtf8(words.take("LINE")));
    } while (!words.atEnd());
    session.editTogether([&] {
        for (const std::string& line : lines) {
            performLine(session, line);
        }
    });
}

} // namespace kthost
