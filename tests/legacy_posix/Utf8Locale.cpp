#include "tests/legacy/Utf8Locale.h"

std::locale utf8Locale() {
    return std::locale("C.UTF-8");
}
