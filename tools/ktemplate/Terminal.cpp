#include "tools/ktemplate/Terminal.h"

#include <unistd.h>

namespace ktemplate {

bool standardErrorIsTerminal() {
    return isatty(STDERR_FILENO) != 0;
}

} // namespace ktemplate
