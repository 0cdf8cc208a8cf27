#include "run/input_files.h"
#include "support/temporary_directory.h"

#include <gtest/gtest.h>
#include <pulsenote_recorder.h>

#include <string>

namespace veldtrim {
namespace {

TEST(InputFiles, AreToldByTheEndingByteForByte) {
    for (const char* path : {"a.txt", "/w/a.xyz", "a.node", ".txt", "a.txt.xyz"}) {
        EXPECT_TRUE(hasInputExtension(path)) << path;
    }
    for (const char* path : {"a.TXT", "txt", "node", "a.txt ", "a.nod", "", "a.node~"}) {
        EXPECT_FALSE(hasInputExtension(path)) << path;
    }
}

TEST(InputFiles, AreToldByTheBeginningOfAnEndlessHeader) {
    const test::TemporaryDirectory directory;
    pulsenote_recorder::clear();
    EXPECT_TRUE(isInputFile(directory.write("a.node", "n" + std::string(300'000, ';'))));
    EXPECT_TRUE(pulsenote_recorder::events().empty());
    EXPECT_FALSE(isInputFile(directory.write("b.txt", std::string(300'000, 'x'))));
    EXPECT_EQ(pulsenote_recorder::events().size(), 1U);
}

} // namespace
} // namespace veldtrim
