#include "kthost/console/Session.h"

#include "kthost/console/ObjectNames.h"
#include "kthost/console/OneLine.h"
#include "kthost/database/Database.h"
#include "kthost/database/DatabaseQueries.h"
#include "kthost/database/DynamicDefinitions.h"
#include "kthost/database/UndoHistory.h"
#include "kthost/documents/Host.h"
#include "kthost/runtime/Utf8.h"

#include <charconv>
#include <ostream>
#include <utility>

namespace kthost {

namespace {

constexpr const wchar_t* kTogether = L"together";

std::string inQuotes(std::wstring_view word) {
    return "'" + toUtf8(word) + "'";
}

} // namespace

Session::Session(Host& host, std::ostream& out, ReadProgress* progress)
    : host_(host),
      out_(out),
      progress_(progress) {}

void Session::say(std::string_view line) {
    out_ << onOneLine(line) << '\n';
}

Document& Session::document() {
    Document* document = host_.documents().currentDocument();
    if (document == nullptr) {
        throw CommandError("no document is open");
    }
    return *document;
}

Database& Session::drawing() {
    KtDbDatabase* database = document().database();
    if (database == nullptr) {
        throw CommandError("the document has no drawing");
    }
    return hostDatabase(*database);
}

KtDbObjectId Session::reference(const std::wstring& word) {
    if (word == L"@last") {
        return remembered();
    }
    if (word.starts_with(L'@')) {
        return counted(word);
    }
    if (const auto handle = parseHandle(word)) {
        return handled(word, *handle);
    }
    return onlyOne(word, referencesByDesignator(drawing(), word));
}

KtDbObjectId Session::erasedReference(const std::wstring& word) {
    if (word.starts_with(L'@') || parseHandle(word)) {
        return reference(word);
    }
    return onlyOne(word, erasedByDesignator(drawing(), word));
}

KtDbObjectId Session::block(const std::wstring& word) {
    if (word.starts_with(L'@')) {
        const KtDbObjectId record = definitionOf(reference(word));
        const KtDbObjectId represented = representedDefinition(record);
        return represented.isNull() ? record : represented;
    }
    const KtDbObjectId record = recordByName(drawing(), word);
    if (record.isNull()) {
        throw CommandError("there is no block " + inQuotes(word));
    }
    return record;
}

void Session::edit(const wchar_t* name, const std::function<void(Database&)>& change) {
    run(name, change, CommandUndo::step);
}

void Session::walkSteps(const wchar_t* name, const std::function<void(Database&)>& walk) {
    run(name, walk, CommandUndo::none);
}

void Session::editTogether(const std::function<void()>& lines) {
    if (together_) {
        throw CommandError("a line of several that run together cannot be several itself");
    }
    run(
        kTogether,
        [&](Database&) {
            together_ = true;
            try {
                lines();
            } catch (...) {
                endTogether(false);
                throw;
            }
            endTogether(true);
        },
        CommandUndo::step);
}

// The drawing that the command runs in has its step open already.
void Session::joinTogether(Database& drawing) {
    if (!drawing.history().isRecordingStep()) {
        drawing.history().begin(kTogether);
        joined_.push_back(&drawing);
    }
}

void Session::endTogether(bool done) {
    together_ = false;
    for (Database* drawing : std::exchange(joined_, {})) {
        UndoHistory& history = drawing->history();
        // What is kept open cannot be taken back: its step stays, and can be undone later.
        static_cast<void>(done ? history.end() : history.cancel());
    }
}

void Session::run(const wchar_t* name, const std::function<void(Database&)>& change, CommandUndo undo) {
    Database& target = drawing();
    if (together_) {
        joinTogether(target);
        change(target);
        return;
    }
    const CommandOutcome outcome = host_.documents().runCommand(
        document(), name,
        [&](Document&) {
            change(target);
            return CommandResult::done;
        },
        undo);
    if (!outcome) {
        throw CommandError(outcome.reason);
    }
}

KtDbObjectId Session::counted(const std::wstring& word) {
    std::size_t number = 0;
    const std::string digits = toUtf8(word).substr(1);
    const auto [end, failure] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    const std::vector<KtDbObjectId> parts = partsOf(drawing());
    if (failure != std::errc() || end != digits.data() + digits.size() || number == 0 ||
        number > parts.size()) {
        throw CommandError("there is no part " + inQuotes(word) + "; the drawing has " +
                           std::to_string(parts.size()));
    }
    return parts[number - 1];
}

KtDbObjectId Session::remembered() {
    if (last_.database() != &drawing()) {
        throw CommandError("no command was about a reference of this drawing");
    }
    return last_;
}

KtDbObjectId Session::handled(const std::wstring& word, std::uint64_t handle) {
    const KtDbObjectId id = objectByHandle(drawing(), handle);
    if (definitionOf(id).isNull()) {
        throw CommandError("there is no reference " + inQuotes(word));
    }
    return id;
}

KtDbObjectId Session::onlyOne(const std::wstring& word, const std::vector<KtDbObjectId>& found) {
    if (found.empty()) {
        throw CommandError("there is no reference " + inQuotes(word));
    }
    if (found.size() == 1) {
        return found.front();
    }
    std::string handles;
    for (const KtDbObjectId id : found) {
        handles += " " + handleText(handleOf(id));
    }
    throw CommandError(inQuotes(word) + " names several references, use a handle:" + handles);
}

} // namespace kthost
