#include "area/exact_side.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <random>

namespace veldtrim {
namespace {

// Points next to lines: rounding decides the sign of the plain determinant.
TEST(ExactSide, AgreesWithIntegerArithmeticNextToTheLine) {
    std::mt19937_64 random(11);
    for (int i = 0; i < 200'000; ++i) {
        const unsigned bits = 3 + static_cast<unsigned>(random() % 47);
        const auto integer = [&] {
            return static_cast<std::int64_t>(random() >> (64 - bits)) -
                   (std::int64_t{1} << (bits - 1));
        };
        const std::array<std::int64_t, 2> a{integer(), integer()};
        const std::int64_t right = integer() / 4;
        const std::int64_t up = right + static_cast<std::int64_t>(random() % 9) - 4;
        const std::array<std::int64_t, 2> step{right, up};
        const std::array<std::int64_t, 2> b{a[0] + 2 * step[0], a[1] + 2 * step[1]};
        const std::array<std::int64_t, 2> nudge{static_cast<std::int64_t>(random() % 3) - 1,
                                                static_cast<std::int64_t>(random() % 3) - 1};
        const std::array<std::int64_t, 2> c{a[0] + step[0] + nudge[0], a[1] + step[1] + nudge[1]};
        // The rest of the determinant cancels itself.
        const std::int64_t half = step[0] * nudge[1] - step[1] * nudge[0];
        const int expected = half > 0 ? 1 : half < 0 ? -1 : 0;
        const double scale = std::ldexp(1.0, static_cast<int>(random() % 200) - 100);
        const auto vertex = [&](const std::array<std::int64_t, 2>& point) {
            return BoundaryVertex{scale * static_cast<double>(point[0]),
                                  scale * static_cast<double>(point[1])};
        };
        ASSERT_EQ(sideOf(vertex(a), vertex(b), vertex(c)), expected) << i;
        ASSERT_EQ(sideOf(vertex(b), vertex(a), vertex(c)), -expected) << i;
        ASSERT_EQ(sideOf(vertex(c), vertex(a), vertex(b)), expected) << i;
    }
}

} // namespace
} // namespace veldtrim
