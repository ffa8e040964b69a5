#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace histories {

/// Lines of a `kthost` script.
using History = std::vector<std::string>;

/// Whether a history shows the fault that is looked for.
using ShowsFault = std::function<bool(const History&)>;

/// Takes lines out of a history that shows a fault as long as it still shows it: runs of them first, halved
/// again and again, then one at a time until none can be spared, nor any of those that are run as one
/// command. Asks at most `mostRuns` times; a history cut short by that shows the fault all the same.
History shrink(History history, const ShowsFault& showsFault, std::size_t mostRuns = 5000);

} // namespace histories
