#pragma once

#include "tests/model/Snapshot.h"

#include <map>
#include <string>

namespace ktmodel {

/// A snapshot as facts in words: what a fact is about, and what is so. Two snapshots are equal exactly when
/// their facts are.
using Facts = std::map<std::string, std::string>;

Facts factsOf(const Snapshot& snapshot);

} // namespace ktmodel
