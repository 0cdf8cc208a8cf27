#include "terminal_progress.h"

#include <gtest/gtest.h>

using veldtrim::pulsenote::TerminalProgress;

TEST(TerminalProgress, redrawsAndErasesOneLine) {
    TerminalProgress progress;
    EXPECT_EQ(progress.erase(), "");
    EXPECT_EQ(progress.draw(12.34), "\r 12.3 %");
    EXPECT_EQ(progress.draw(12.31), "") << "nothing to redraw";
    EXPECT_EQ(progress.draw(-5), "\r  0.0 %");
    EXPECT_EQ(progress.draw(99.999), "\r 99.9 %") << "the end is not reached";
    EXPECT_EQ(progress.draw(1e300), "\r100.0 %");
    EXPECT_EQ(progress.erase(), "\r       \r");
    EXPECT_EQ(progress.erase(), "");
    EXPECT_EQ(progress.draw(100), "\r100.0 %") << "drawn anew after it was erased";
}
