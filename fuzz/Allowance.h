#pragma once

#include <cstddef>
#include <ctime>

/// Holds what is done in its lifetime to the memory and the time that the size of an input explains. One at a
/// time.
class Allowance {
public:
    /// `bytes` is how much may be allocated at a time beyond what is allocated now; `seconds` is of the
    /// processor's time, as a machine may have other things to do, too.
    Allowance(std::size_t bytes, double seconds);
    Allowance(const Allowance&) = delete;
    Allowance& operator=(const Allowance&) = delete;
    /// Ends the program when more was taken.
    ~Allowance();

private:
    std::size_t bytes_;
    double seconds_;
    std::clock_t begun_;
};
