#include "elevation/record_count.h"
#include "support/temporary_directory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace veldtrim {
namespace {

TEST(RecordCount, IsTheLineFeedsLessOne) {
    const test::TemporaryDirectory directory;
    EXPECT_EQ(countRecords(directory.path("missing")), -1);
    // More than a block, with runs of line feeds longer than any counter of a few bits.
    std::string large;
    for (int i = 0; i < 3000; ++i) {
        large += std::string(static_cast<std::size_t>(i), i % 3 == 0 ? 'a' : '\n');
    }
    EXPECT_EQ(countRecords(directory.write("file", large)),
              std::count(large.begin(), large.end(), '\n') - 1);
}

} // namespace
} // namespace veldtrim
