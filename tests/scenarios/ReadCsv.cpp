#include "tests/scenarios/ReadCsv.h"

#include <cstddef>

namespace kthost {

namespace {

std::string takeQuoted(std::string_view csv, std::size_t& at) {
    std::string field;
    for (++at; csv.at(at) != '"' || csv.substr(at, 2) == "\"\""; ++at) {
        if (csv[at] == '"') {
            ++at; // two stand for one
        }
        field += csv[at];
    }
    ++at;
    return field;
}

std::string takeField(std::string_view csv, std::size_t& at) {
    if (csv.at(at) == '"') {
        return takeQuoted(csv, at);
    }
    const std::size_t end = csv.find_first_of(",\r", at);
    std::string field(csv.substr(at, end - at));
    at = end;
    return field;
}

} // namespace

std::vector<std::vector<std::string>> readCsv(std::string_view csv) {
    std::vector<std::vector<std::string>> lines;
    for (std::size_t at = 0; at < csv.size(); at += 2) { // CR LF
        lines.push_back({takeField(csv, at)});
        while (csv.at(at) == ',') {
            lines.back().push_back(takeField(csv, ++at));
        }
    }
    return lines;
}

} // namespace kthost
