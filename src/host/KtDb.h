#pragma once

#include <cstdint>

namespace KtDb {

/// How an object is opened. Reading: many at once. Writing: one, and nobody else. For notify: to add and
/// remove reactors, whoever else has the object open.
enum OpenMode : std::uint8_t {
    kForRead = 0,
    kForWrite = 1,
    kForNotify = 2,
};

} // namespace KtDb
