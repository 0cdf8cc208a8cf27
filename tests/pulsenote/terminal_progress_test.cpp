#include "terminal_progress.h"
#include "thinning.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstddef>
#include <string>
#include <vector>

using namespace veldtrim::pulsenote;

namespace {

TerminalProgress::Time at(int milliseconds) {
    return TerminalProgress::Time{} + std::chrono::milliseconds(milliseconds);
}

TEST(TerminalProgress, fitsTheWidth) {
    const struct {
        std::size_t width;
        double position;
        int milliseconds;
        const char* line;
    } cases[] = {
        {200, 50, 2000,
         "\r[####################....................]  50.0 %  1.25M records/s  0:02 left"},
        {33, 25, 2000, "\r[##......]  25.0 %  625k/s  0:06"},
        {30, 30, 2000, "\r 30.0 %  0:05"},
        {12, 25, 2000, "\r 25.0 %"},
        {7, 25, 2000, ""},
        {0, 25, 2000, ""},
        {40, 0, 2000, "\r[.............................]   0.0 %"},
        {40, 99.999, 99, "\r[############################.]  99.9 %"},
        {40, 1e300, 2000, "\r[##############] 100.0 %  2.50M/s  0:00"},
        {40, 1, 200'000'000, "\r[................]   1.0 %  0/s  > 99 h"},
        {40, 50, 4'000'000, "\r[######.......]  50.0 %  625/s  1:06:40"}};
    for (const auto& [width, position, milliseconds, line] : cases) {
        TerminalProgress progress;
        progress.beginStretch(0, 40, 2'000'000, at(0));
        EXPECT_EQ(progress.draw(position, at(milliseconds), width), line);
    }
}

TEST(TerminalProgress, redrawsAtMostTenTimesASecond) {
    TerminalProgress progress;
    progress.beginStretch(0, 100, 1000, at(0));
    EXPECT_NE(progress.draw(10, at(0), 80), "");
    EXPECT_EQ(progress.draw(11, at(99), 80), "");
    EXPECT_NE(progress.draw(12, at(100), 80), "");
}

TEST(TerminalProgress, erasesTheWholeLine) {
    TerminalProgress progress;
    EXPECT_EQ(progress.erase(80), "");
    EXPECT_EQ(progress.restore(80), "");
    const std::string line = progress.draw(12, at(0), 20);
    EXPECT_EQ(line, "\r[#........]  12.0 %");
    EXPECT_EQ(progress.erase(20), "\r" + std::string(19, ' ') + "\r");
    EXPECT_EQ(progress.erase(20), "");
    EXPECT_EQ(progress.restore(20), line.substr(1));
    // A shorter line overwrites the rest of the previous one, but not beyond a narrower terminal.
    EXPECT_EQ(progress.draw(12, at(100), 12), "\r 12.0 %     \r 12.0 %");
    EXPECT_EQ(progress.erase(5), "\r     \r");
    EXPECT_EQ(progress.restore(5), "") << "the terminal is too narrow";
}

TEST(TerminalProgress, countsOnlyTheRecordsOfJoiningStretches) {
    const auto lineAfter = [](const std::vector<StretchScale>& stretches) {
        TerminalProgress progress;
        for (const auto& [start, end, steps] : stretches) {
            progress.beginStretch(start, end, steps, at(0));
        }
        return progress.draw(50, at(1000), 40);
    };
    const StretchScale closing{1, 100, 100};
    EXPECT_EQ(lineAfter({{0, 0, 0}, closing}), "\r[#########.........]  50.0 %  0:01 left");
    EXPECT_EQ(lineAfter({{0, 0, 0}, {0, 100, 30}, closing}),
              "\r[########.........]  50.0 %  15/s  0:01");
    EXPECT_EQ(lineAfter({{0, -10, -1}, {-10, 100, 11}, closing}),
              "\r[#########.........]  50.0 %  5/s  0:01");
}

} // namespace
