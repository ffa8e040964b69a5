#include "tests/support/HostTrace.h"

#include <algorithm>
#include <sstream>

namespace {

/// What stands behind the name up to the next comma or brace, without quotation marks; empty when the line
/// has no such field.
std::string fieldOf(const std::string& line, const std::string& name) {
    const std::string mark = "\"" + name + "\": ";
    const std::size_t found = line.find(mark);
    if (found == std::string::npos) {
        return {};
    }
    const std::size_t start = found + mark.size();
    std::string value = line.substr(start, line.find_first_of(",}", start) - start);
    std::erase(value, '"');
    return value;
}

std::vector<std::string> linesOf(const std::filesystem::path& file) {
    std::istringstream text(contentsOf(file));
    std::vector<std::string> lines;
    for (std::string line; std::getline(text, line);) {
        lines.push_back(line);
    }
    return lines;
}

/// Of the object that the line is about first; the null id when it is about none.
KtDbObjectId idOf(const std::string& line) {
    const std::string mark = R"("id": {"id": )";
    const std::size_t found = line.find(mark);
    return found == std::string::npos ? KtDbObjectId()
                                      : KtDbObjectId(std::stoull(line.substr(found + mark.size())));
}

} // namespace

std::vector<std::string> HostTrace::calls(const std::map<KtDbObjectId, std::string>& names) const {
    std::vector<std::string> calls;
    for (const std::string& line : linesOf(file_)) {
        const auto name = names.find(idOf(line));
        if (name == names.end() || fieldOf(line, "event") == "notify") {
            continue;
        }
        std::string call = fieldOf(line, "event") + " " + name->second;
        const std::string mode = fieldOf(line, "mode");
        call += mode.empty() ? "" : " " + mode;
        for (const char* flag :
             {"openErased", "directOnly", "forceValidity", "atBeginning", "skipErased", "load"}) {
            call += fieldOf(line, flag) == "true" ? std::string(" ") + flag : "";
        }
        calls.push_back(std::move(call));
    }
    return calls;
}

std::size_t HostTrace::count(const std::string& event) const {
    const std::vector<std::string> lines = linesOf(file_);
    return static_cast<std::size_t>(std::ranges::count_if(
        lines, [&event](const std::string& line) { return fieldOf(line, "event") == event; }));
}
