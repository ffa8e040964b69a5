#include "kthost/window/Terminal.h"

#include <unistd.h>

namespace kthost {

bool isTerminal(StandardStream stream) {
    return isatty(static_cast<int>(stream)) != 0;
}

} // namespace kthost
