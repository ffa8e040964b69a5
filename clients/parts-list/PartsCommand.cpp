#include "PartsCommand.h"

#include "ParseOptions.h"
#include "Refusal.h"
#include "TextTable.h"
#include "Watches.h"

#include <KtApDocument.h>
#include <KtEd.h>

#include <string_view>

namespace parts {

namespace {

void show(const DocumentWatch& watch) {
    for (const std::wstring& line : toLines(watch.list().table())) {
        ktedPrint(line.c_str());
    }
    if (const InUse* obstacle = watch.list().obstacle()) {
        ktedPrint((L"not up to date: " + obstacle->reason()).c_str());
    }
}

void runHeartbeat(DocumentWatch& watch, std::wstring_view word) {
    const std::uint32_t milliseconds = parseMilliseconds(word);
    if (word == L"off") {
        watch.stopHeartbeat();
    } else if (milliseconds != 0) {
        watch.startHeartbeat(milliseconds);
    } else {
        throw Refusal(L"'heartbeat' needs a number of milliseconds, or off");
    }
}

/// True for the commands that do something with what is there already.
bool runOnExisting(DocumentWatch& watch, std::span<const wchar_t* const> words) {
    const std::wstring_view word = words.empty() ? L"" : words.front();
    if (word == L"heartbeat" && words.size() == 2) {
        runHeartbeat(watch, words[1]);
        return true;
    }
    if (words.size() != 1) {
        return false;
    }
    if (word == L"show") {
        show(watch);
    } else if (word == L"check") {
        watch.list().check();
    } else if (word == L"stop") {
        static_cast<void>(watch.list()); // to refuse when there is none
        watch.stopList();
    } else {
        return false;
    }
    return true;
}

} // namespace

void runPartsCommand(Watches& watches, KtApDocument& document, std::span<const wchar_t* const> words) {
    if (document.database() == nullptr) {
        throw Refusal(L"the document has no drawing");
    }
    DocumentWatch& watch = watches.of(document);
    if (runOnExisting(watch, words)) {
        return;
    }
    Options options;
    if (const std::wstring reason = parseOptions(words, options); !reason.empty()) {
        throw Refusal(reason);
    }
    watch.startList(options);
}

} // namespace parts
