#pragma once

#include <string>
#include <vector>

namespace kthost {

/// To be called first in main(), with what it is given: the words of the command line behind the program's
/// name, in UTF-8, whatever encoding the system gives them in. From then on what the standard streams carry
/// is bytes that pass unchanged, and a terminal takes them for UTF-8.
std::vector<std::string> startProgram(int count, char** words);

} // namespace kthost
