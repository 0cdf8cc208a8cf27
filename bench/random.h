/// Pseudo-random numbers that are the same on every machine.
#pragma once

#include <cstdint>

namespace veldtrim::bench {

/// The generator SplitMix64 (G. L. Steele et al., "Fast Splittable Pseudorandom Number Generators",
/// OOPSLA 2014). The standard library's distributions differ between implementations.
class Random {
public:
    explicit Random(std::uint64_t seed) : state_(seed) {}

    std::uint64_t next() {
        std::uint64_t z = state_ += 0x9e3779b97f4a7c15U;
        z = (z ^ (z >> 30U)) * 0xbf58476d1ce4e5b9U;
        z = (z ^ (z >> 27U)) * 0x94d049bb133111ebU;
        return z ^ (z >> 31U);
    }

    /// Evenly spread in [low, high).
    double between(double low, double high) {
        return low + (high - low) * (static_cast<double>(next() >> 11U) * 0x1p-53);
    }

    /// Evenly spread in [0, end), but for a share of end / 2^32. `end` is at most 2^32.
    std::uint64_t below(std::uint64_t end) { return ((next() >> 32U) * end) >> 32U; }

private:
    std::uint64_t state_;
};

} // namespace veldtrim::bench
