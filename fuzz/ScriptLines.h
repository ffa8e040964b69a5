#pragma once

#include <string>
#include <string_view>
#include <vector>

/// The lines of a script, without what ends them.
inline std::vector<std::string> linesOf(std::string_view script) {
    std::vector<std::string> lines;
    while (!script.empty()) {
        const std::size_t end = script.find('\n');
        lines.emplace_back(script.substr(0, end));
        script.remove_prefix(end == std::string_view::npos ? script.size() : end + 1);
    }
    return lines;
}

inline std::string scriptOf(const std::vector<std::string>& lines) {
    std::string script;
    for (const std::string& line : lines) {
        script += line + "\n";
    }
    return script;
}
