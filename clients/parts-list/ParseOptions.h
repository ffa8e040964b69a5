#pragma once

#include "Options.h"

#include <span>
#include <string>
#include <string_view>

namespace parts {

/// Reads `[BLOCK...|from TEMPLATE] [by KIND] [where TAG=TEXT...] [to FILE] [as table X,Y]`; the clauses may
/// come in any order, each once. Returns the reason why the words cannot be understood, or the empty text;
/// `options` is then complete.
std::wstring parseOptions(std::span<const wchar_t* const> words, Options& options);

/// A whole number of milliseconds from 1 to 2,147,483,647; 0 for anything else.
std::uint32_t parseMilliseconds(std::wstring_view text);

} // namespace parts
