#include "tests/model/Snapshot.h"

#include "tests/model/Facts.h"

namespace ktmodel {

namespace {

/// What both say of each thing that either says something of.
std::map<std::string, std::pair<std::string, std::string>> sideBySide(const Facts& left, const Facts& right) {
    std::map<std::string, std::pair<std::string, std::string>> both;
    for (const auto& [about, fact] : left) {
        both[about] = {fact, "not there"};
    }
    for (const auto& [about, fact] : right) {
        both.try_emplace(about, "not there", "").first->second.second = fact;
    }
    return both;
}

} // namespace

std::string difference(const Snapshot& expected, const Snapshot& actual, std::size_t most) {
    if (expected == actual) {
        return {};
    }
    std::string lines;
    std::size_t count = 0;
    for (const auto& [about, facts] : sideBySide(factsOf(expected), factsOf(actual))) {
        if (facts.first != facts.second && ++count <= most) {
            lines.append(about).append(": expected ").append(facts.first);
            lines.append(", is ").append(facts.second).append("\n");
        }
    }
    if (count > most) {
        lines += "and " + std::to_string(count - most) + " more differences\n";
    }
    return lines.empty() ? "unequal in what has no words\n" : lines;
}

std::string textOf(const Snapshot& snapshot) {
    std::string lines;
    for (const auto& [about, fact] : factsOf(snapshot)) {
        lines.append(about).append(": ").append(fact).append("\n");
    }
    return lines;
}

} // namespace ktmodel
