#pragma once

#include <cstdlib>
#include <iostream>
#include <string_view>

/// Ends the program, which is how a fuzzer hears that an input shows a fault.
inline void require(bool holds, std::string_view what) {
    if (!holds) {
        std::cerr << "does not hold: " << what << std::endl;
        std::abort();
    }
}
