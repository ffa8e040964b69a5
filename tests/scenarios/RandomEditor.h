#pragma once

#include "kthost/database/Database.h"

#include <cstdint>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace kthost {

/// Makes up command lines that fit a drawing as it is. Some cannot be done all the same.
class RandomEditor {
public:
    /// `external` is a schematic to be attached now and then.
    RandomEditor(Database& drawing, std::string external, std::uint32_t seed)
        : drawing_(drawing),
          external_(std::move(external)),
          random_(seed) {}

    std::string nextLine();

private:
    std::string insert();
    std::string set();
    std::string move();
    std::string copy();
    std::string erase();
    std::string restore();
    std::string define();
    std::string purge();
    std::string undo();
    std::string redo();
    std::string attachOrReload();
    std::string detach();

    std::uint32_t number(std::uint32_t most) { return static_cast<std::uint32_t>(random_() % (most + 1)); }

    KtDbObjectId anyReference();
    KtDbObjectId anyBlock();
    std::string position();
    std::string designator();

    std::string attached();

    Database& drawing_;
    std::string external_;
    std::mt19937 random_;
    std::vector<std::string> erased_; // handles
    std::uint32_t made_ = 0;
};

} // namespace kthost
