#include "kthost/window/Terminal.h"

#include <io.h>

namespace kthost {

bool isTerminal(StandardStream stream) {
    return _isatty(static_cast<int>(stream)) != 0;
}

} // namespace kthost
