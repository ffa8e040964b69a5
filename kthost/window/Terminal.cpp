#include "kthost/window/Terminal.h"

#ifdef _WIN32
#include <io.h>
#else
#include <unistd.h>
#endif

namespace kthost {

namespace {

int descriptorOf(StandardStream stream) {
    switch (stream) {
    case StandardStream::input:
        return 0;
    case StandardStream::output:
        return 1;
    default:
        return 2;
    }
}

} // namespace

bool isTerminal(StandardStream stream) {
#ifdef _WIN32
    return _isatty(descriptorOf(stream)) != 0;
#else
    return isatty(descriptorOf(stream)) != 0;
#endif
}

} // namespace kthost
