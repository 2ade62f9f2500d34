#pragma once

#include <cstdio>
#include <cstdlib>
#include <string_view>

/// Ends the program when what must hold does not, for the fuzzer to keep the input.
inline void require(bool holds, std::string_view what) {
    if (holds) return;
    std::fprintf(stderr, "does not hold: %.*s\n", static_cast<int>(what.size()), what.data());
    std::abort();
}
