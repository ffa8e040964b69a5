#pragma once

#include <locale>

/// The locale of the user who runs the program, asked for once: the system's encoding of 8-bit text, its
/// order of texts and its lower case. The classic one where the system does not have it. Any thread.
///
/// A locale cannot be handed from one copy of the C++ run-time library to another, so whoever needs it is
/// linked with its definition rather than with a library that has it.
const std::locale& userLocale();
