#include "legacy/ArchiveIndexTable.h"

#include <algorithm>

void ArchiveIndexTable::handOutToClass() {
    classes_.push_back(next_);
    ++next_;
}

void ArchiveIndexTable::handOutToObject() {
    ++next_;
}

bool ArchiveIndexTable::isClass(std::uint64_t index) const {
    return std::binary_search(classes_.begin(), classes_.end(), index);
}

bool ArchiveIndexTable::isObject(std::uint64_t index) const {
    return index >= 1 && index < next_ && !isClass(index);
}
