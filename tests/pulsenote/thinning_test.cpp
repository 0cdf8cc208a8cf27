#include "thinning.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <utility>

using namespace veldtrim::pulsenote;

namespace {

constexpr int MinInt = std::numeric_limits<int>::min();
constexpr int MaxInt = std::numeric_limits<int>::max();
constexpr double Infinity = std::numeric_limits<double>::infinity();

TEST(Thinning, positionIsToTheThousandthAndNeverRoundedUpToTheEnd) {
    EXPECT_EQ((StretchScale{0, 100, 3}.position(1)), 33.333);
    EXPECT_EQ((StretchScale{0, 100, 3}.position(2)), 66.667);
    EXPECT_EQ((StretchScale{0, 100, 300'000'000}.position(299'999'999)), 99.999);
    EXPECT_EQ((StretchScale{1, 100, 100}.position(100)), 100);
    EXPECT_EQ((StretchScale{0, 100, 10}.position(-1)), -10);
    EXPECT_EQ((StretchScale{20, 100, 0}.position(5)), 20);
    EXPECT_EQ((StretchScale{20, 100, MinInt}.position(5)), 20);
}

TEST(Thinning, newsIsATenthAwayOrTheEnd) {
    EXPECT_TRUE(isNews(0, {}));
    EXPECT_FALSE(isNews(Infinity, {}) || isNews(std::nan(""), {}) || isNews(-Infinity, 5.0));
    const std::pair<double, double> news[] = {{0, 0.1},       {0.2, 0.3},     {0.3, 0.2},
                                              {99.999, 100},  {100.001, 100}, {99.95, 100.01},
                                              {-1e308, 1e308}};
    for (const auto& [last, position] : news) {
        EXPECT_TRUE(isNews(position, last)) << last << " then " << position;
    }
    const std::pair<double, double> none[] = {{0, 0},     {0, 0.099},    {0.3, 0.201},
                                              {100, 100}, {100, 99.901}, {1e300, 1e300}};
    for (const auto& [last, position] : none) {
        EXPECT_FALSE(isNews(position, last)) << last << " then " << position;
    }
}

/// The window around `step` holds no news, and ends where news begins.
void expectExactWindow(const StretchScale& scale, int step, double last) {
    const StepWindow window = quietSteps(scale, step, last);
    const auto isQuiet = [&](std::int64_t at) {
        const double position = scale.position(static_cast<int>(at));
        return std::isfinite(position) && !isNews(position, last);
    };
    ASSERT_EQ(window.contains(step), isQuiet(step));
    // Distances that double from the step on reach every size of window; around its ends, which a
    // search finds, every step counts.
    for (const int direction : {-1, 1}) {
        bool quietSoFar = isQuiet(step);
        std::int64_t lastInside = step;
        for (std::int64_t distance = 1; distance < std::int64_t{1} << 33; distance *= 2) {
            const std::int64_t at = step + direction * distance;
            if (at < MinInt || at > MaxInt) {
                break;
            }
            quietSoFar = quietSoFar && isQuiet(at);
            ASSERT_EQ(window.contains(static_cast<int>(at)), quietSoFar) << at;
            lastInside = quietSoFar ? at : lastInside;
        }
        for (std::int64_t at = lastInside, n = 0;
             n < 200 && at >= MinInt && at <= MaxInt && quietSoFar; at += direction, ++n) {
            ASSERT_EQ(window.contains(static_cast<int>(at)), isQuiet(at)) << at;
        }
    }
}

TEST(Thinning, quietStepsAreExactlyThoseWithoutNews) {
    std::mt19937_64 random(4711);
    const auto pick = [&](auto low, auto high) {
        return std::uniform_real_distribution<double>(low, high)(random);
    };
    for (int round = 0; round < 20'000; ++round) {
        const auto steps = static_cast<int>(std::exp(pick(0, 21.4)));
        StretchScale scale{pick(-10, 110), pick(-10, 110), steps};
        if (round % 4 == 0) { // a stretch of a run with many files
            scale.end = scale.start + pick(-0.5, 0.5);
        }
        const auto step = static_cast<int>(pick(0, steps));
        const double last = round % 3 == 0 ? 100 : scale.position(step) + pick(-0.2, 0.2);
        ASSERT_NO_FATAL_FAILURE(expectExactWindow(scale, step, last))
            << scale.start << " to " << scale.end << " in " << steps << ", step " << step
            << ", last " << last;
    }
}

TEST(Thinning, quietStepsAtTheEndsOfInt) {
    // Where all steps are quiet, the window holds all but one.
    const StepWindow all = quietSteps({5, 5, 10}, 3, 5);
    EXPECT_TRUE(all.contains(MinInt) && all.contains(-1) && all.contains(MaxInt - 1));
    for (const StretchScale& scale :
         {StretchScale{0, 100, 1}, StretchScale{99.95, 100, 2}, StretchScale{0, 1e308, 3},
          StretchScale{-8e307, 8e307, 5}, StretchScale{-1e308, 1e308, 5},
          StretchScale{std::nan(""), 1, 1}}) {
        for (const int step : {MinInt, -1, 0, 1, MaxInt}) {
            for (const double last : {0.0, 7.0, 100.0, 1e308}) {
                expectExactWindow(scale, step, last);
            }
        }
    }
}

} // namespace
