#pragma once

#include <locale>

/// The locale of the user who runs the program, asked for once; the classic one where the system does not
/// have it.
const std::locale& userLocale();
