#include "elevation/record_count.h"
#include "support/temporary_directory.h"

#include <gtest/gtest.h>

#include <string>

namespace veldtrim {
namespace {

TEST(RecordCount, IsTheLineFeedsLessOne) {
    const test::TemporaryDirectory directory;
    const auto count = [&](const std::string& bytes) {
        return countRecords(directory.write("file", bytes));
    };
    EXPECT_EQ(countRecords(directory.path("missing")), -1);
    EXPECT_EQ(count(""), -1);
    EXPECT_EQ(count("x;y;z"), -1);
    EXPECT_EQ(count("x;y;z\n"), 0);
    EXPECT_EQ(count("x;y;z\n1;2;3\n\n4;5;6\n"), 3);
    EXPECT_EQ(count("x;y;z\r\n1;2;3\r\n4;5;6\r\n7;8;9"), 2);
    EXPECT_EQ(count("x;y;z\r1;2;3\r"), -1);

    // More than a block, with runs of line feeds longer than any counter of a few bits.
    std::string large;
    for (int i = 0; i < 3000; ++i) {
        large += std::string(static_cast<std::size_t>(i), i % 3 == 0 ? 'a' : '\n');
    }
    const std::int64_t lineFeeds = std::count(large.begin(), large.end(), '\n');
    EXPECT_EQ(count(large), lineFeeds - 1);
}

} // namespace
} // namespace veldtrim
