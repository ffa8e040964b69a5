#pragma once

#include <KtRxCallback.h>

#include <cstddef>

/// Plain functions to be called back by, numbered from 0 in ascending order of their addresses.
namespace puppets {

constexpr std::size_t kCount = 12;

KtRxCallback functionOf(std::size_t number);

/// Defined by whoever does what the function with that number does.
void called(std::size_t number);

} // namespace puppets
