#include "kthost/window/Terminal.h"

#include <io.h>

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
    return _isatty(descriptorOf(stream)) != 0;
}

} // namespace kthost
