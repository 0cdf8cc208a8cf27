/// How a fuzz target says that the code under test has answered wrong.
#pragma once

#include <cstdio>
#include <cstdlib>

namespace veldtrim::fuzz {

/// Ends the process with `claim` on standard error unless it holds, so that a fuzzer keeps the
/// input and a replay fails.
inline void require(bool holds, const char* claim) {
    if (!holds) {
        std::fprintf(stderr, "does not hold: %s\n", claim);
        std::abort();
    }
}

} // namespace veldtrim::fuzz
