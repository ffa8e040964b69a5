#pragma once

#include <locale>

/// A locale whose 8-bit text is UTF-8. Throws std::runtime_error where the system has none.
std::locale utf8Locale();
