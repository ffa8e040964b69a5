#include "tests/histories/Generator.h"

#include "kthost/database/Database.h"
#include "kthost/database/UndoHistory.h"
#include "kthost/documents/Host.h"

#include <algorithm>
#include <iterator>
#include <numeric>

namespace histories {

template <std::size_t kCount>
std::string Generator::choose(const Choice (&choices)[kCount]) {
    const std::uint32_t sum =
        std::accumulate(std::begin(choices), std::end(choices), 0U,
                        [](std::uint32_t before, const Choice& choice) { return before + choice.weight; });
    std::uint32_t place = drawn_.number(sum - 1);
    const Choice* choice = std::begin(choices);
    for (; place >= choice->weight; ++choice) {
        place -= choice->weight;
    }
    return (this->*choice->make)();
}

History Generator::opening() {
    const std::uint32_t draw = drawn_.number(99);
    const Size size = draw < 75 ? Size::small : draw < 97 ? Size::medium : Size::large;
    length_ = size == Size::large ? 1000 : 150 + drawn_.number(250);
    History lines{"load KtDxNotify.kmx", "load PartsList.kmx", "load Puppets.kmx"};
    const History drawing = scaffold(drawn_, size, folder_);
    const History clients{"parts", "puppet 3 attach R C", "puppet 5 attach *"};
    const bool clientsFirst = drawn_.oneIn(3);
    lines.push_back(drawing.front()); // clients need a document
    if (clientsFirst) {
        lines.insert(lines.end(), clients.begin(), clients.begin() + drawn_.number(3));
    }
    lines.insert(lines.end(), drawing.begin() + 1, drawing.end());
    if (!clientsFirst) {
        lines.insert(lines.end(), clients.begin(), clients.begin() + drawn_.number(3));
    }
    return lines;
}

std::string Generator::next() {
    static constexpr Choice kChoices[] = {{60, &Generator::edit},     {14, &Generator::history},
                                          {17, &Generator::client},   {3, &Generator::list},
                                          {4, &Generator::busy},      {4, &Generator::held},
                                          {3, &Generator::documents}, {1, &Generator::modules},
                                          {7, &Generator::together},  {1, &Generator::nonsense}};
    if (!drawn_.hasDrawing()) {
        return withoutDrawing();
    }
    return drawn_.oneIn(6) ? repair() : choose(kChoices);
}

/// What makes checks impossible is over soon, or they would prove little.
std::string Generator::repair() {
    if (!notifyLoaded_ || !listLoaded_) {
        return modules();
    }
    if (session_.held().count() != 0) {
        return "release";
    }
    if (listIsDoubtful_) {
        listIsDoubtful_ = false;
        return list();
    }
    return edit();
}

std::string Generator::withoutDrawing() {
    return drawn_.oneIn(2) ? "new plan" + std::to_string(++made_) : "current " + drawn_.document();
}

std::string Generator::edit() {
    static constexpr Choice kChoices[] = {{60, &Generator::referenceEdit},
                                          {22, &Generator::definitionEdit},
                                          {10, &Generator::dynamicEdit},
                                          {8, &Generator::externalEdit}};
    return choose(kChoices);
}

std::string Generator::referenceEdit() {
    static constexpr Choice kChoices[] = {{14, &Generator::insert},
                                          {9, &Generator::set},
                                          {6, &Generator::move},
                                          {6, &Generator::copy},
                                          {9, &Generator::erase},
                                          {8, &Generator::restore},
                                          {2, &Generator::attribute},
                                          {2, &Generator::eraseAttribute},
                                          {1, &Generator::restoreAttribute},
                                          {2, &Generator::xdata},
                                          {1, &Generator::table}};
    return choose(kChoices);
}

std::string Generator::definitionEdit() {
    static constexpr Choice kChoices[] = {{5, &Generator::define},   {4, &Generator::defineFrom},
                                          {4, &Generator::redefine}, {3, &Generator::rename},
                                          {7, &Generator::purge},    {1, &Generator::layout}};
    return choose(kChoices);
}

std::string Generator::dynamicEdit() {
    static constexpr Choice kChoices[] = {{3, &Generator::anonymous},
                                          {2, &Generator::dynamic},
                                          {2, &Generator::represent},
                                          {4, &Generator::representBy},
                                          {4, &Generator::unit}};
    return choose(kChoices);
}

std::string Generator::insert() {
    const bool isAny = drawn_.oneIn(3);
    std::string line = "insert " + (isAny ? drawn_.block() : drawn_.namedBlock()) + " " + drawn_.position();
    if (drawn_.oneIn(2)) {
        line += " in " + drawn_.container();
    }
    return line + attributes();
}

std::string Generator::attributes() {
    std::string words;
    if (!drawn_.oneIn(4)) {
        words += " Reference=" + drawn_.text();
    }
    const std::uint32_t more = drawn_.oneIn(12) ? 12 : drawn_.number(2);
    for (std::uint32_t number = 0; number < more; ++number) {
        words += " T" + std::to_string(number) + "=" + drawn_.text();
    }
    return words;
}

std::string Generator::set() {
    const std::string reference = drawn_.reference();
    const std::string tag = drawn_.tagOf(reference);
    return (tag == "Note" && !drawn_.oneIn(4) ? "attribute " : "set ") + reference + " " + tag + " " +
           drawn_.text();
}

std::string Generator::move() {
    return "move " + drawn_.reference() + " " + drawn_.position();
}

std::string Generator::copy() {
    return "copy " + drawn_.reference() + " " + drawn_.position();
}

std::string Generator::erase() {
    return "erase " + drawn_.reference();
}

std::string Generator::restore() {
    return "restore " + drawn_.erasedReference();
}

std::string Generator::attribute() {
    return "attribute " + drawn_.reference() + " T" + std::to_string(drawn_.number(3)) + " " + drawn_.text();
}

std::string Generator::eraseAttribute() {
    const std::string reference = drawn_.reference();
    return "erase " + reference + " " + drawn_.tagOf(reference);
}

std::string Generator::restoreAttribute() {
    static const std::vector<std::string> kTags{"Reference", "Value", "T0", "T1", "T2"};
    return "restore " + (drawn_.oneIn(3) ? "@last" : drawn_.reference()) + " " + drawn_.oneOf(kTags);
}

std::string Generator::xdata() {
    const std::string line = "xdata " + drawn_.reference() + " MAKER";
    return drawn_.oneIn(3) ? line : line + " " + drawn_.text();
}

std::string Generator::table() {
    return "table Q " + drawn_.position() + " 1 2" + (drawn_.oneIn(3) ? " in " + drawn_.container() : "");
}

std::string Generator::define() {
    return "define N" + std::to_string(++made_);
}

std::string Generator::defineFrom() {
    return define() + " from " + drawn_.block();
}

std::string Generator::redefine() {
    const std::string line = "redefine " + drawn_.block();
    return drawn_.oneIn(3) ? line : line + " as " + drawn_.block();
}

std::string Generator::rename() {
    return "rename " + drawn_.namedBlock() + " M" + std::to_string(drawn_.number(20));
}

std::string Generator::purge() {
    return "purge " + (drawn_.oneIn(3) ? drawn_.block() : drawn_.idleBlock());
}

std::string Generator::layout() {
    return "layout L" + std::to_string(drawn_.number(6));
}

std::string Generator::anonymous() {
    return drawn_.oneIn(5) ? "anonymous T" : "anonymous U";
}

std::string Generator::dynamic() {
    return "dynamic " + drawn_.namedBlock();
}

std::string Generator::represent() {
    return "represent " + drawn_.dynamicBlock() + " l" + std::to_string(drawn_.number(5));
}

std::string Generator::representBy() {
    return represent() + " by " + drawn_.anonymousBlock();
}

std::string Generator::unit() {
    return "insert " + drawn_.dynamicBlock() + " " + drawn_.position() + " unit " +
           std::to_string(1 + drawn_.number(3)) + attributes();
}

std::string Generator::file() {
    static const std::vector<std::string> kFiles{"pair", "units", "sheets"};
    return inQuotes(folder_ + "/" + drawn_.oneOf(kFiles) + ".kicad_sch");
}

std::string Generator::attachExternal() {
    return "attach " + file() + " as XREF" + std::to_string(drawn_.number(2));
}

std::string Generator::externalEdit() {
    switch (drawn_.number(5)) {
    case 0:
    case 1:
        return attachExternal();
    case 2:
        return "detach " + drawn_.attachedDrawing();
    case 3:
        return "insert " + drawn_.attachedDrawing() + " " + drawn_.position() +
               (drawn_.oneIn(2) ? " in " + drawn_.container() : "");
    default:
        return "reload " + drawn_.attachedDrawing() + (drawn_.oneIn(2) ? " from " + file() : "");
    }
}

std::string Generator::history() {
    if (!recording_ && drawn_.oneIn(2)) {
        recording_ = true;
        return "recording on";
    }
    const std::uint32_t draw = drawn_.number(29);
    if (draw == 0) {
        return "forget";
    }
    if (draw == 1) {
        recording_ = false;
        return "recording off";
    }
    const kthost::UndoHistory& history = session_.drawing().history();
    const bool redoes = history.redoable() != 0 && draw > 14;
    const std::size_t possible = redoes ? history.redoable() : history.undoable();
    const auto most = static_cast<std::uint32_t>(std::min<std::size_t>(possible, drawn_.oneIn(3) ? 8 : 1));
    return (redoes ? "redo " : "undo ") + std::to_string(1 + drawn_.number(std::max(most, 1U) - 1));
}

std::string Generator::documents() {
    switch (drawn_.number(9)) {
    case 0:
        return "new plan" + std::to_string(++made_);
    case 7:
        return "abandon plan" + std::to_string(++made_);
    case 8:
        return drawn_.oneIn(2) ? "new blank" + std::to_string(++made_) + " without drawing"
                               : "current " + drawn_.document();
    case 1:
        return "open " + file();
    case 2:
        return session_.host().documents().documents().size() > 2 || drawn_.oneIn(6)
                   ? "close " + drawn_.document()
                   : "current " + drawn_.document();
    default:
        return "current " + drawn_.document();
    }
}

std::string Generator::client() {
    if (drawn_.oneIn(7)) {
        const std::string who = "puppet " + std::to_string(drawn_.number(11)) + " when called ";
        return who + (drawn_.oneIn(3) ? "nothing" : puppetDirection());
    }
    return puppet();
}

std::string Generator::puppet() {
    return "puppet " + puppetDirection();
}

std::string Generator::puppetDirection() {
    static constexpr Choice kChoices[] = {{8, &Generator::puppetAttach},
                                          {5, &Generator::puppetDetach},
                                          {3, &Generator::puppetEvery},
                                          {5, &Generator::puppetUpdate},
                                          {2, &Generator::puppetEdit}};
    const std::string direction = choose(kChoices);
    return drawn_.oneIn(6) ? "at " + drawn_.document() + " " + direction : direction;
}

std::string Generator::puppetAttach() {
    std::string line = std::to_string(drawn_.number(11)) + " attach";
    if (drawn_.oneIn(5)) {
        return line + " *";
    }
    for (std::uint32_t number = 0; number <= drawn_.number(2); ++number) {
        line += " " + drawn_.container();
    }
    return line;
}

std::string Generator::puppetDetach() {
    return std::to_string(drawn_.number(11)) + " detach";
}

std::string Generator::puppetEvery() {
    const std::string who = std::to_string(drawn_.number(11));
    return drawn_.oneIn(3) ? who + " never" : who + " every " + (drawn_.oneIn(5) ? "100" : "0");
}

std::string Generator::puppetUpdate() {
    return std::string("update") + (drawn_.oneIn(3) ? "" : " force") + (drawn_.oneIn(2) ? "" : " notify");
}

std::string Generator::puppetEdit() {
    return drawn_.oneIn(4) ? "throw" : drawn_.oneIn(3) ? "draw" : "strike " + drawn_.block();
}

std::string Generator::list() {
    switch (drawn_.number(9)) {
    case 0:
        return "parts stop";
    case 1:
        return "parts by occurrence";
    case 2:
        return "parts by component as table 5,5";
    case 3:
    case 4:
        return "parts " + drawn_.namedBlock();
    case 5:
        return "parts as table 5,5";
    case 6:
        return "parts heartbeat " + std::string(drawn_.oneIn(2) ? "off" : "50");
    default:
        return "parts";
    }
}

/// What keeps the host from being idle is over soon, or little would happen.
std::string Generator::busy() {
    static const std::vector<std::string> kBegin{"typing on", "dialog on", "pending 2", "lock",
                                                 "lock elsewhere"};
    static const std::vector<std::string> kEnd{"typing off", "dialog off", "pending 0", "unlock"};
    if (drawn_.oneIn(4)) {
        return "tick " + std::to_string(1 + drawn_.number(200));
    }
    if (busyWith_ > 0) {
        --busyWith_;
        return kEnd[busyWith_];
    }
    if (drawn_.oneIn(2)) {
        busyWith_ = static_cast<std::uint32_t>(kEnd.size());
        return drawn_.oneOf(kBegin);
    }
    return drawn_.oneOf(kEnd);
}

std::string Generator::held() {
    static const std::vector<std::string> kModes{"read", "write", "notify"};
    if (session_.held().count() != 0 && !drawn_.oneIn(3)) {
        return "release";
    }
    const std::string line = "hold " + drawn_.oneOf(kModes) + " ";
    switch (drawn_.number(5)) {
    case 0:
        return line + "blocks";
    case 1:
    case 2:
        return line + "block " + drawn_.container();
    case 3: {
        const std::string reference = drawn_.reference();
        return line + reference + " " + drawn_.tagOf(reference);
    }
    default:
        return line + (drawn_.oneIn(4) ? drawn_.erasedReference() : drawn_.reference());
    }
}

std::string Generator::modules() {
    listIsDoubtful_ = true;
    if (!notifyLoaded_ || (listLoaded_ && drawn_.oneIn(2))) {
        notifyLoaded_ = !notifyLoaded_;
        return notifyLoaded_ ? "load KtDxNotify.kmx" : "unload KtDxNotify.kmx";
    }
    listLoaded_ = !listLoaded_;
    return listLoaded_ ? "load PartsList.kmx" : "unload PartsList.kmx";
}

std::string Generator::together() {
    std::string line = "together";
    for (std::uint32_t number = 0; number <= 1 + drawn_.number(3); ++number) {
        line += " " + inQuotes(innerLine());
    }
    return line;
}

std::string Generator::innerLine() {
    switch (drawn_.number(29)) {
    case 0:
        return "current " + drawn_.document();
    case 1:
    case 2:
    case 3:
    case 4:
    case 5:
        return "puppet " + puppetUpdate();
    case 6:
    case 7:
    case 8:
        return puppet();
    case 9:
        return list();
    case 10:
        return nonsense();
    default:
        return edit();
    }
}

std::string Generator::nonsense() {
    static const std::vector<std::string> kLines{"erase NOBODY",
                                                 "insert NOBODY 1,1",
                                                 "purge R|NOBODY",
                                                 "frobnicate",
                                                 "undo 1000",
                                                 "puppet 99 detach",
                                                 "puppet",
                                                 "reload NOBODY",
                                                 "set @last Nothing x",
                                                 "define \"*bad\"",
                                                 "current NOBODY",
                                                 "represent R l by R",
                                                 "restore @last",
                                                 "together \"erase X\"",
                                                 "puppet at NOBODY update"};
    return drawn_.oneOf(kLines);
}

} // namespace histories
