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
    // More than a block, with more line feeds in a row than any counter of one byte can hold.
    std::string large;
    for (const std::size_t run : {1U, 63U, 64U, 1000U, 40'000U, 300'000U}) {
        large += std::string(run, '\n') + std::string(run, 'a');
    }
    EXPECT_EQ(countRecords(directory.write("file", large)),
              std::count(large.begin(), large.end(), '\n') - 1);
}

} // namespace
} // namespace veldtrim
