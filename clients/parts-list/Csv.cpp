#include "Csv.h"

#include "Utf8.h"

namespace parts {

namespace {

void appendField(std::string& csv, const std::wstring& text) {
    const std::string bytes = toUtf8(text);
    if (bytes.find_first_of(",\"\r\n") == std::string::npos) {
        csv += bytes;
        return;
    }
    csv += '"';
    for (const char byte : bytes) {
        csv.append(byte == '"' ? 2 : 1, byte);
    }
    csv += '"';
}

void appendLine(std::string& csv, const std::vector<std::wstring>& cells) {
    const char* separator = "";
    for (const std::wstring& cell : cells) {
        csv += separator;
        appendField(csv, cell);
        separator = ",";
    }
    csv += "\r\n";
}

} // namespace

std::string toCsv(const PartsTable& table) {
    std::string csv;
    appendLine(csv, table.columns);
    for (const Row& row : table.rows) {
        appendLine(csv, row.cells);
    }
    return csv;
}

} // namespace parts
