#pragma once

#include "kthost/reader/SchematicReader.h"

#include <filesystem>
#include <string>
#include <string_view>

namespace kthost::test {

/// A schematic of version 8 that holds `body` after its uuid "root".
inline std::string schematicText(std::string_view body) {
    return "(kicad_sch (version 20231120) (uuid \"root\")\n" + std::string(body) + "\n)\n";
}

/// The same of version 6.
inline std::string oldSchematicText(std::string_view body) {
    return "(kicad_sch (version 20211123) (uuid root)\n" + std::string(body) + "\n)\n";
}

inline Schematic parse(std::string text) {
    return readSchematic(SourceText("t.kicad_sch", std::move(text)));
}

inline Schematic parseBody(std::string_view body) {
    return parse(schematicText(body));
}

/// The message of the ReadError that `action` ends with, or a text that no error has.
template <typename Action>
std::string errorOf(const Action& action) {
    try {
        action();
    } catch (const ReadError& error) {
        return error.what();
    }
    return "no error";
}

inline std::string parseError(std::string text) {
    return errorOf([&text] { parse(std::move(text)); });
}

inline std::string bodyError(std::string_view body) {
    return parseError(schematicText(body));
}

/// The project's own sample drawings lie beside the tests.
inline std::filesystem::path samplesFolder() {
    return std::filesystem::path(__FILE__).parent_path() / ".." / ".." / ".." / "samples";
}

} // namespace kthost::test
