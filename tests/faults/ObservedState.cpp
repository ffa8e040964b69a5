#include "tests/faults/ObservedState.h"

#include <set>

namespace {

std::string valueIn(const ObservedState::Facts& facts, const std::string& fact) {
    const auto found = facts.find(fact);
    return found == facts.end() ? "nothing" : found->second;
}

} // namespace

std::string differenceOf(const ObservedState::Facts& expected, const ObservedState::Facts& actual,
                         const std::function<bool(const std::string& fact)>& ignore) {
    std::set<std::string> names;
    for (const auto* facts : {&expected, &actual}) {
        for (const auto& [fact, value] : *facts) {
            names.insert(fact);
        }
    }
    std::string text;
    for (const std::string& fact : names) {
        const std::string wanted = valueIn(expected, fact);
        const std::string found = valueIn(actual, fact);
        if (wanted != found && !ignore(fact)) {
            text.append("  ").append(fact).append(": ").append(found);
            text.append(" and not ").append(wanted).append("\n");
        }
    }
    return text;
}
