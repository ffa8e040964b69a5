#include "tests/histories/Tally.h"

#include <algorithm>
#include <cctype>
#include <sstream>

namespace histories {

namespace {

bool isNumber(const std::string& word) {
    return std::all_of(word.begin(), word.end(),
                       [](unsigned char letter) { return std::isdigit(letter) != 0; });
}

} // namespace

void Tally::add(const Tally& other) {
    for (const auto& [kind, counts] : other.lines) {
        lines[kind].done += counts.done;
        lines[kind].refused += counts.refused;
    }
    idleChecks += other.idleChecks;
    listChecks += other.listChecks;
    comparisons += other.comparisons;
}

std::string kindOfLine(const std::string& line) {
    std::istringstream words(line);
    std::string kind;
    words >> kind;
    if (kind != "puppet") {
        return kind;
    }
    std::string word;
    while (words >> word && isNumber(word)) {
    }
    return kind + " " + word;
}

} // namespace histories
