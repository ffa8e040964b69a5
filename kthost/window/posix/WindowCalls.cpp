#include "kthost/window/WindowCalls.h"

namespace kthost {

void setAnswered(WindowCall /*call*/, bool /*byHost*/) {}

void answerInNewLibraries() {}

} // namespace kthost
