#include "tests/legacy/Utf8Locale.h"

#include "kthost/window/windows/SystemLocale.h"

std::locale utf8Locale() {
    return kthost::systemLocale(CP_UTF8);
}
