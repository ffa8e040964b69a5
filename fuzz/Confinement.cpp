#include "fuzz/Confinement.h"

#include "kthost/console/CommandError.h"
#include "kthost/console/SplitLine.h"
#include "kthost/runtime/Utf8.h"

#include <algorithm>
#include <string>
#include <vector>

namespace {

/// Every line that may be run, and every word that may be a file: a name of something else is taken for one
/// at worst.
bool leadsOut(const std::wstring& word) {
    return word.find_first_of(L"/\\") != std::wstring::npos || word == L"..";
}

bool takesFile(const std::wstring& command) {
    static const std::vector<std::wstring> kCommands{L"open", L"load", L"attach", L"reload", L"parts"};
    return std::find(kCommands.begin(), kCommands.end(), command) != kCommands.end();
}

std::vector<std::wstring> wordsOf(std::string_view line) {
    try {
        return kthost::splitLine(line);
    } catch (const kthost::CommandError&) {
        return {}; // is refused
    }
}

} // namespace

bool staysInFolder(std::string_view line) {
    const std::vector<std::wstring> words = wordsOf(line);
    if (words.empty()) {
        return true;
    }
    if (takesFile(words.front())) {
        return std::none_of(words.begin(), words.end(), &leadsOut);
    }
    // Lines in lines in lines are refused, but cost nothing to look at.
    return words.front() != L"together" ||
           std::all_of(words.begin() + 1, words.end(),
                       [](const std::wstring& inner) { return staysInFolder(kthost::toUtf8(inner)); });
}
