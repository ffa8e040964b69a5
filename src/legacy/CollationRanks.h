#pragma once

#include <locale>
#include <span>
#include <string>
#include <vector>

/// For each text the place that it takes among all of them, from 0, when they are compared as the locale's
/// users do and without regard to case. Texts that compare equal have the same place, and places have no
/// gaps.
std::vector<std::size_t> collationRanks(std::span<const std::wstring> texts, const std::locale& locale);
