#include "run/input_files.h"
#include "support/temporary_directory.h"

#include <gtest/gtest.h>
#include <pulsenote_recorder.h>

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace veldtrim {
namespace {

namespace recorder = pulsenote_recorder;

TEST(InputFiles, AreToldByTheEndingByteForByte) {
    for (const char* path : {"a.txt", "/w/a.xyz", "a.node", ".txt", "a.txt.xyz"}) {
        EXPECT_TRUE(hasInputExtension(path)) << path;
    }
    for (const char* path :
         {"a.TXT", "b.Node", "txt", "node", "a.txt ", "a.nod", "a", "", "a.node~"}) {
        EXPECT_FALSE(hasInputExtension(path)) << path;
    }
}

TEST(InputFiles, AreReportedWhenTheirHeaderIsNotAccepted) {
    const test::TemporaryDirectory directory;
    const std::string xyzText =
        "ERROR: Using the xyz format, the first header line must be one of x;y;z , X;Y;Z , "
        "x;y;z;g , Y;Y;Z;G , while the separator (e.g. \";\" is variable";
    const std::vector<std::pair<std::string, std::string>> skipped{
        {directory.write("empty.txt", ""), "the header line is empty"},
        {directory.write("blank.xyz", "\r\nx;y;z\n"), "the header line is empty"},
        {directory.path("missing.node"), "the header line is empty"},
        {directory.write("number.txt", "1;2;3\n"),
         "ERROR: first character of node file must be one of n,N,x,X"},
        {directory.write("order.txt", "x;z;y\n1;2;3\n"), xyzText},
        {directory.write("endless.txt", std::string(300'000, 'x')), xyzText},
    };
    recorder::clear();
    std::vector<recorder::Event> expected;
    for (const auto& [path, reason] : skipped) {
        EXPECT_FALSE(isInputFile(path)) << path;
        expected.push_back(recorder::state(1, "Skipping input file " + path + ": " + reason, true));
    }
    EXPECT_FALSE(isInputFile(directory.write("other.csv", "1;2;3\n"))); // without a word
    EXPECT_TRUE(isInputFile(directory.write("good.xyz", "x;y;z\r\n")));
    EXPECT_TRUE(isInputFile(directory.write("node.node", "n" + std::string(300'000, ';'))));
    EXPECT_EQ(recorder::events(), expected);
}

TEST(InputFiles, OfADirectoryComeWithTheirRecordCounts) {
    const test::TemporaryDirectory directory;
    static_cast<void>(directory.write("scans/a.txt", "x;y;z\n1;2;3\n4;5;6\n"));
    static_cast<void>(directory.write("scans/b.txt", "1;2;3\n"));
    static_cast<void>(directory.write("scans/c.dat", "x;y;z\n1;2;3\n"));
    static_cast<void>(directory.write("scans/d.xyz/e.txt", "x;y;z\n1;2;3\n"));
    static_cast<void>(directory.write("scans/f.node", "n;y;z"));
    std::vector<std::pair<std::string, std::int32_t>> found;
    for (const InputFile& file : findInputFiles(directory.path("scans"))) {
        found.emplace_back(std::filesystem::path(file.path).filename().string(), file.recordCount);
    }
    std::sort(found.begin(), found.end());
    const std::vector<std::pair<std::string, std::int32_t>> expected{{"a.txt", 2}, {"f.node", -1}};
    EXPECT_EQ(found, expected);
}

} // namespace
} // namespace veldtrim
