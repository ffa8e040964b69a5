#include "kthost/window/ProgramStart.h"

namespace kthost {

std::vector<std::string> startProgram(int count, char** words) {
    return count > 1 ? std::vector<std::string>(words + 1, words + count) : std::vector<std::string>();
}

} // namespace kthost
