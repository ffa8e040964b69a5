#pragma once

#include <cstdint>
#include <vector>

/// The indices that an archive hands out while it is read, from 1 on in the order of first appearance: one
/// for each class description and one for each object.
class ArchiveIndexTable {
public:
    void handOutToClass();
    void handOutToObject();

    [[nodiscard]] bool isClass(std::uint64_t index) const;
    [[nodiscard]] bool isObject(std::uint64_t index) const;

private:
    std::uint64_t next_ = 1;
    std::vector<std::uint64_t> classes_; ///< ascending; every other index below next_ is an object's
};
