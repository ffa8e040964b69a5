#include "kthost/console/ReferenceCommands.h"

#include "kthost/console/AttributeNames.h"
#include "kthost/console/Designators.h"
#include "kthost/console/ObjectNames.h"
#include "kthost/console/Session.h"
#include "kthost/console/StatusText.h"
#include "kthost/console/UnitRecord.h"
#include "kthost/console/Words.h"
#include "kthost/database/Attributes.h"
#include "kthost/database/Database.h"
#include "kthost/database/DatabaseQueries.h"
#include "kthost/database/References.h"
#include "kthost/runtime/Utf8.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <optional>

namespace kthost {

namespace {

struct InsertLine {
    NewReference reference;
    std::optional<std::uint32_t> unit;
};

AttributeText splitAttribute(const std::wstring& word) {
    const std::size_t equals = word.find(L'=');
    if (equals == std::wstring::npos || equals == 0) {
        throw UsageError("'" + toUtf8(word) + "' is no attribute TAG=TEXT");
    }
    return {word.substr(0, equals), word.substr(equals + 1)};
}

void addAttribute(std::vector<AttributeText>& attributes, AttributeText attribute) {
    if (std::any_of(attributes.begin(), attributes.end(),
                    [&](const AttributeText& other) { return other.tag == attribute.tag; })) {
        throw CommandError("the attribute '" + toUtf8(attribute.tag) + "' comes twice");
    }
    attributes.push_back(std::move(attribute));
}

InsertLine readInsertLine(Session& session, Words& words) {
    InsertLine line;
    line.reference.definition = session.block(words.take("BLOCK"));
    line.reference.position = words.takePoint();
    line.reference.container = session.drawing().modelSpaceId();
    if (words.takeIf(L"unit")) {
        line.unit = words.takeNumber("N", 1, std::numeric_limits<std::int32_t>::max());
    }
    if (words.takeIf(L"in")) {
        line.reference.container = session.block(words.take("CONTAINER"));
    }
    while (!words.atEnd()) {
        addAttribute(line.reference.attributes, splitAttribute(words.take("TAG=TEXT")));
    }
    return line;
}

} // namespace

void runInsert(Session& session, Words& words) {
    InsertLine line = readInsertLine(session, words);
    KtDbObjectId id;
    session.edit(L"insert", [&](Database& database) {
        const KtDbObjectId block = line.reference.definition;
        line.reference.definition = recordForUnit(database, block, line.unit);
        line.reference.occurrences = designateInLayout(database, line.reference, line.unit.value_or(1));
        require(insertReference(database, line.reference, id),
                "'" + toUtf8(recordName(block)) + "' cannot be inserted");
    });
    session.remember(id);
    session.say("inserted " + referenceText(id) + ", " + blockName(id));
}

void runSet(Session& session, Words& words) {
    const KtDbObjectId id = session.reference(words.take("REF"));
    const std::wstring tag = words.take("TAG");
    const std::wstring text = words.take("TEXT");
    words.expectEnd();
    const std::string what = referenceText(id);
    const std::string before = toUtf8(requireAttribute(id, tag).text);
    session.edit(L"set", [&](Database& database) {
        if (tag == L"Reference") {
            redesignate(database, id, toWide(before), text);
        }
        require(setAttributeText(database, id, tag, text), what + " cannot be changed");
    });
    session.remember(id);
    session.say("set " + what + " " + toUtf8(tag) + " = " + toUtf8(text) + " (was " + before + ")");
}

void runMove(Session& session, Words& words) {
    const KtDbObjectId id = session.reference(words.take("REF"));
    const KtGePoint3d position = words.takePoint();
    words.expectEnd();
    session.edit(L"move", [&](Database& database) {
        require(moveReference(database, id, position), referenceText(id) + " cannot be moved");
    });
    session.remember(id);
    session.say("moved " + referenceText(id));
}

void runCopy(Session& session, Words& words) {
    const KtDbObjectId id = session.reference(words.take("REF"));
    const KtGePoint3d position = words.takePoint();
    words.expectEnd();
    KtDbObjectId copy;
    session.edit(L"copy", [&](Database& database) {
        require(copyReference(database, id, position, copy), referenceText(id) + " cannot be copied");
    });
    session.remember(copy);
    session.say("copied " + referenceText(id) + " to " + handleText(handleOf(copy)));
}

void runErase(Session& session, Words& words) {
    const KtDbObjectId id = session.reference(words.take("REF"));
    const std::wstring tag = words.atEnd() ? L"" : words.take("TAG");
    words.expectEnd();
    const std::string what = referenceText(id) + (tag.empty() ? "" : " " + toUtf8(tag));
    const KtDbObjectId attribute = tag.empty() ? KtDbObjectId() : requireAttribute(id, tag).id;
    session.edit(L"erase", [&](Database& database) {
        require(tag.empty() ? eraseReference(database, id) : eraseAttribute(database, attribute),
                what + " cannot be erased");
    });
    session.remember(id);
    session.say("erased " + what);
}

void runRestore(Session& session, Words& words) {
    const KtDbObjectId id = session.erasedReference(words.take("REF"));
    const std::wstring tag = words.atEnd() ? L"" : words.take("TAG");
    words.expectEnd();
    const KtDbObjectId attribute = tag.empty() ? KtDbObjectId() : requireErasedAttribute(id, tag);
    session.edit(L"restore", [&](Database& database) {
        require(tag.empty() ? restoreReference(database, id) : restoreAttribute(database, attribute),
                handleText(handleOf(id)) + " cannot be restored");
    });
    session.remember(id);
    session.say("restored " + referenceText(id) + (tag.empty() ? "" : " " + toUtf8(tag)));
}

} // namespace kthost
