#include "kthost/reader/SchematicFields.h"
#include "kthost/runtime/Utf8.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace kthost {

namespace {

constexpr std::size_t kNone = static_cast<std::size_t>(-1);

class ParentResolver {
public:
    ParentResolver(const SourceText& source, std::vector<LibSymbol>& symbols);

    void resolveAll();

private:
    void resolve(std::size_t index);
    void inherit(std::size_t index, std::size_t parent);
    std::size_t parentOf(std::size_t index) const;
    std::size_t find(std::wstring_view name) const;
    [[noreturn]] void fail(std::size_t index, std::string expected, const std::wstring& found) const;

    enum class State : std::uint8_t { Untouched, Underway, Resolved };

    const SourceText& source_;
    std::vector<LibSymbol>& symbols_;
    std::unordered_map<std::wstring_view, std::size_t> byName_;
    std::vector<State> states_;
};

ParentResolver::ParentResolver(const SourceText& source, std::vector<LibSymbol>& symbols)
    : source_(source),
      symbols_(symbols),
      states_(symbols.size(), State::Untouched) {
    byName_.reserve(symbols.size());
    for (std::size_t i = 0; i < symbols.size(); ++i) {
        if (!byName_.emplace(symbols[i].name, i).second) {
            fail(i, "a name that no other entry of the file has", symbols[i].name);
        }
    }
}

void ParentResolver::fail(std::size_t index, std::string expected, const std::wstring& found) const {
    throw ReadError(source_.fileName(), symbols_[index].position, std::move(expected),
                    '"' + toUtf8(found) + '"');
}

void ParentResolver::resolveAll() {
    for (std::size_t i = 0; i < symbols_.size(); ++i) {
        resolve(i);
    }
}

std::size_t ParentResolver::find(std::wstring_view name) const {
    const auto found = byName_.find(name);
    return found == byName_.end() ? kNone : found->second;
}

// A parent is named with its library, or without it where it is of the same library.
std::size_t ParentResolver::parentOf(std::size_t index) const {
    const LibSymbol& symbol = symbols_[index];
    if (symbol.extends.empty()) {
        return kNone;
    }
    std::size_t parent = find(symbol.extends);
    if (parent == kNone) {
        const std::size_t colon = symbol.name.find(L':');
        const std::wstring library = colon == std::wstring::npos ? L"" : symbol.name.substr(0, colon + 1);
        parent = find(library + symbol.extends);
    }
    if (parent == kNone) {
        fail(index, "an entry that extends another entry of the file", symbol.extends);
    }
    return parent;
}

void ParentResolver::inherit(std::size_t index, std::size_t parent) {
    states_[index] = State::Resolved;
    if (parent != kNone) {
        symbols_[index].unitCount = symbols_[parent].unitCount;
        symbols_[index].bodyStyleCount = symbols_[parent].bodyStyleCount;
        symbols_[index].isPower |= symbols_[parent].isPower;
    }
}

void ParentResolver::resolve(std::size_t index) {
    std::vector<std::size_t> chain;
    for (; index != kNone && states_[index] != State::Resolved; index = parentOf(index)) {
        if (states_[index] == State::Underway) {
            fail(index, "an entry that does not extend itself", symbols_[index].extends);
        }
        states_[index] = State::Underway;
        chain.push_back(index);
    }
    for (; !chain.empty(); chain.pop_back()) {
        inherit(chain.back(), index);
        index = chain.back();
    }
}

} // namespace

void resolveExtends(const SourceText& source, std::vector<LibSymbol>& symbols) {
    ParentResolver(source, symbols).resolveAll();
}

} // namespace kthost
