#include "kthost/reader/ReadError.h"

#include <utility>

namespace kthost {

namespace {

std::string place(const std::string& file, SourcePosition position) {
    if (position.line == 0) {
        return file;
    }
    return file + ":" + std::to_string(position.line) + ":" + std::to_string(position.column);
}

} // namespace

ReadError::ReadError(std::string file, SourcePosition position, std::string expected, std::string found)
    : std::runtime_error(place(file, position) + ": expected " + expected + ", found " + found),
      file_(std::move(file)),
      position_(position),
      expected_(std::move(expected)),
      found_(std::move(found)) {}

} // namespace kthost
