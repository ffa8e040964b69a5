#include "tests/scenarios/RandomEditor.h"

#include "kthost/console/ObjectNames.h"
#include "kthost/database/DatabaseQueries.h"
#include "kthost/runtime/Utf8.h"

#include <KtDbBlockTableRecord.h>

#include <iterator>

namespace kthost {

namespace {

/// A whole drawing comes or goes in one command out of so many.
constexpr std::uint32_t kRarity = 40;

std::string quoted(std::wstring_view text) {
    std::string word = "\"";
    for (const char byte : toUtf8(text)) {
        word.append(byte == '"' ? 2 : 1, byte);
    }
    return word + "\"";
}

/// Not so for the records that came with an attached drawing.
bool standsForDrawing(KtDbObjectId id) {
    KtDbBlockTableRecord* record = nullptr;
    if (ktdbOpenObject(record, id, KtDb::kForRead) != Orbx::eOk) {
        return false;
    }
    const bool stands =
        record->isFromExternalReference() && recordName(id).find(L'|') == std::wstring_view::npos;
    static_cast<void>(record->close());
    return stands;
}

std::string handle(KtDbObjectId id) {
    return handleText(handleOf(id));
}

} // namespace

std::string RandomEditor::nextLine() {
    using Maker = std::string (RandomEditor::*)();
    // Changed texts are what lists live on; undo and redo are what breaks them.
    static constexpr Maker kMakers[] = {
        &RandomEditor::set,   &RandomEditor::set,     &RandomEditor::set,    &RandomEditor::set,
        &RandomEditor::move,  &RandomEditor::insert,  &RandomEditor::copy,   &RandomEditor::erase,
        &RandomEditor::erase, &RandomEditor::restore, &RandomEditor::undo,   &RandomEditor::undo,
        &RandomEditor::redo,  &RandomEditor::redo,    &RandomEditor::define, &RandomEditor::purge};
    static constexpr Maker kRareMakers[] = {&RandomEditor::attachOrReload, &RandomEditor::attachOrReload,
                                            &RandomEditor::detach};
    if (allReferences(drawing_).empty()) { // it is emptied faster than it is filled
        return records(drawing_, false).empty() ? "define NEW" + std::to_string(++made_) : insert();
    }
    if (number(kRarity) == 0) {
        return (this->*kRareMakers[number(std::size(kRareMakers) - 1)])();
    }
    return (this->*kMakers[number(std::size(kMakers) - 1)])();
}

std::string RandomEditor::insert() {
    std::string line = "insert " + quoted(recordName(anyBlock())) + " " + position();
    if (number(3) == 0) {
        line += " unit " + std::to_string(1 + number(4));
    }
    if (number(3) == 0) {
        line += " in " + quoted(recordName(anyBlock()));
    }
    return line + " Reference=" + designator() + " Value=new in_bom=yes dnp=no";
}

std::string RandomEditor::set() {
    const KtDbObjectId reference = anyReference();
    const std::vector<AttributeView> attributes = attributesOf(reference);
    if (attributes.empty()) {
        return move();
    }
    const AttributeView& attribute = attributes[number(static_cast<std::uint32_t>(attributes.size() - 1))];
    const bool isFlag = attribute.text == L"yes" || attribute.text == L"no";
    const std::string text = isFlag ? (number(1) == 0 ? "yes" : "no") : designator();
    return "set " + handle(reference) + " " + quoted(attribute.tag) + " " + text;
}

std::string RandomEditor::move() {
    return "move " + handle(anyReference()) + " " + position();
}

std::string RandomEditor::copy() {
    return "copy " + handle(anyReference()) + " " + position();
}

std::string RandomEditor::erase() {
    erased_.push_back(handle(anyReference()));
    return "erase " + erased_.back();
}

std::string RandomEditor::restore() {
    return erased_.empty() ? erase()
                           : "restore " + erased_[number(static_cast<std::uint32_t>(erased_.size() - 1))];
}

std::string RandomEditor::define() {
    const std::string line = "define NEW" + std::to_string(++made_);
    return number(1) == 0 ? line : line + " from " + quoted(recordName(anyBlock()));
}

std::string RandomEditor::purge() {
    return "purge " + quoted(recordName(anyBlock()));
}

std::string RandomEditor::undo() {
    return "undo " + std::to_string(1 + number(3));
}

std::string RandomEditor::redo() {
    return "redo " + std::to_string(1 + number(3));
}

/// The name of one of the attached drawings; empty when there is none.
std::string RandomEditor::attached() {
    std::vector<KtDbObjectId> found = records(drawing_, false);
    std::erase_if(found, [](KtDbObjectId record) { return !standsForDrawing(record); });
    return found.empty() ? ""
                         : quoted(recordName(found[number(static_cast<std::uint32_t>(found.size() - 1))]));
}

std::string RandomEditor::attachOrReload() {
    const std::string name = attached();
    return name.empty() || number(2) == 0 ? "attach \"" + external_ + "\" as XREF" + std::to_string(number(1))
                                          : "reload " + name;
}

std::string RandomEditor::detach() {
    const std::string name = attached();
    return name.empty() ? attachOrReload() : "detach " + name;
}

/// There has to be one.
KtDbObjectId RandomEditor::anyReference() {
    const std::vector<KtDbObjectId> all = allReferences(drawing_);
    return all[number(static_cast<std::uint32_t>(all.size() - 1))];
}

KtDbObjectId RandomEditor::anyBlock() {
    const std::vector<KtDbObjectId> all = records(drawing_, false);
    return all[number(static_cast<std::uint32_t>(all.size() - 1))];
}

std::string RandomEditor::position() {
    return std::to_string(number(300)) + "," + std::to_string(number(200));
}

std::string RandomEditor::designator() {
    return "X" + std::to_string(number(99));
}

} // namespace kthost
