#pragma once

#include <cstddef>

/// This program's operator new counts what it gives out, and can be told to fail.
namespace counted_memory {

/// Bytes that are given out and not yet given back.
std::size_t current();
/// The most that current() has been since resetPeak().
std::size_t peak();
void resetPeak();
/// How many were given out so far, whether or not they were given back.
std::size_t allocations();

/// The allocation after that many successful ones fails, once; then all succeed again.
void failAfter(std::size_t allocations);
/// Takes back an order that was not carried out. True when there was one left.
bool cancelFailure();

} // namespace counted_memory
