#include "thinning.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <random>

using namespace veldtrim::pulsenote;

namespace {

constexpr int minInt = std::numeric_limits<int>::min();
constexpr int maxInt = std::numeric_limits<int>::max();

TEST(Thinning, positionIsRoundedToTheThousandthButNotUpToTheEnd) {
    EXPECT_EQ((StretchScale{0, 100, 3}.position(1)), 33.333);
    EXPECT_EQ((StretchScale{0, 100, 300'000'000}.position(299'999'999)), 99.999);
    EXPECT_EQ((StretchScale{1, 100, 100}.position(100)), 100);
    EXPECT_EQ((StretchScale{0, 100, 10}.position(-1)), -10);
    EXPECT_EQ((StretchScale{20, 100, minInt}.position(5)), 20);
}

TEST(Thinning, newsIsATenthAwayOrTheEnd) {
    EXPECT_TRUE(isNews(0, {}));
    EXPECT_FALSE(isNews(HUGE_VAL, {}) || isNews(std::nan(""), {}) || isNews(-HUGE_VAL, 5.0));
    const struct {
        double last;
        double position;
        bool news;
    } cases[] = {{0, 0.1, true},        {0.2, 0.3, true},      {0.3, 0.2, true},
                 {99.999, 100, true},   {100.001, 100, true},  {99.95, 100.01, true},
                 {-1e308, 1e308, true}, {0, 0, false},         {0, 0.099, false},
                 {0.3, 0.201, false},   {100, 100, false},     {100, 99.901, false},
                 {1e300, 1e300, false}, {100, 100.099, false}, {100.05, 100.01, false}};
    for (const auto& [last, position, news] : cases) {
        EXPECT_EQ(isNews(position, last), news) << last << " then " << position;
    }
}

// Three random stretches at a time, with steps from anywhere, one by one or in strides, up or down.
TEST(Thinning, skipsNothingButWhatIsNotNews) {
    std::mt19937_64 random(4711);
    const auto oneIn = [&](unsigned count) { return random() % count == 0; };
    const auto real = [&](double low, double high) {
        return std::uniform_real_distribution<double>(low, high)(random);
    };
    const auto position = [&](double usual) {
        static constexpr std::array<double, 10> odd{100,   99.95,  100.05, -0.0,     1e12,
                                                    1e300, -1e308, 1e308,  HUGE_VAL, NAN};
        return oneIn(9) ? odd[random() % odd.size()] : usual;
    };
    std::optional<double> last; // by the plain definition
    Thinning thinning;
    std::array<std::unique_ptr<Stretch>, 3> stretches;
    std::array<StretchScale, 3> scales{};
    int skipped = 0;
    int delivered = 0;
    for (std::size_t round = 0; round < 30'000; ++round) {
        auto& stretch = stretches[round % 3];
        StretchScale& scale = scales[round % 3];
        if (!stretch || oneIn(3)) {
            const double start = oneIn(3) ? 0 : position(real(-10, 110));
            const double end = oneIn(2) ? 100 : position(start + real(-1, 2));
            scale = {start, end, oneIn(9) ? 0 : static_cast<int>(std::exp(real(0, 21.4)))};
            stretch = std::make_unique<Stretch>(thinning, scale);
        }
        const std::array<double, 4> begins{0, minInt, maxInt - 20, real(-1e3, scale.steps)};
        auto step = static_cast<std::int64_t>(begins[random() % begins.size()]);
        const auto stride =
            oneIn(2) ? 1 : static_cast<std::int64_t>(1 + real(0, scale.steps / 5e3));
        const auto direction = oneIn(4) ? -stride : stride;
        for (auto left = random() % 300; left > 0 && step >= minInt && step <= maxInt; --left) {
            const int now = static_cast<int>(step);
            const double there = scale.position(now);
            const bool news = isNews(there, last);
            last = news ? there : last;
            const bool quiet = stretch->isQuiet(now);
            ASSERT_EQ(quiet ? std::nullopt : stretch->reach(now),
                      news ? std::optional(there) : std::nullopt)
                << scale.start << " to " << scale.end << " in " << scale.steps << ", step " << now;
            skipped += quiet ? 1 : 0;
            delivered += news ? 1 : 0;
            step += oneIn(50) ? -3 * direction : direction;
        }
    }
    EXPECT_GT(skipped, 1'000'000);
    EXPECT_GT(delivered, 200'000);
}

TEST(Thinning, nearlyAllStepsAreSkipped) {
    constexpr int steps = 1'000'000;
    for (const StretchScale& scale :
         {StretchScale{0, 100, steps}, StretchScale{99, 100, steps}, StretchScale{100, 0, steps},
          StretchScale{7, 7, steps}, StretchScale{7, 9, 0}}) {
        Thinning thinning;
        Stretch stretch(thinning, scale);
        int reached = 0;
        for (int step = 0; step <= steps; ++step) {
            if (!stretch.isQuiet(step)) {
                static_cast<void>(stretch.reach(step));
                ++reached;
            }
        }
        EXPECT_LE(reached, 4002) << scale.start << " to " << scale.end;
    }
}

} // namespace
