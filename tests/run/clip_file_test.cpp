#include "elevation/record.h"
#include "judges/model_builder.h"
#include "run/clip_file.h"
#include "support/temporary_directory.h"

#include <gtest/gtest.h>
#include <pulsenote_recorder.h>

#include <random>
#include <string>
#include <vector>

namespace veldtrim {
namespace {

// Whole runs show what is kept and written; here is what a whole run cannot bring about.
class ClipFile : public testing::Test {
protected:
    std::int32_t clip(const std::string& input, std::int32_t records) {
        pulsenote_recorder::clear();
        return clipFile(model, directory.write("in.txt", input), outputPath, records, 0, 1);
    }

    std::string output() {
        std::string bytes = test::readBytes(outputPath);
        std::erase(bytes, '\r');
        return bytes;
    }

    test::TemporaryDirectory directory;
    std::string outputPath = directory.path("out.txt");
    BoundaryModel model = test::modelOf({{{0, 0}, {10, 0}, {10, 10}, {0, 10}}});
};

TEST_F(ClipFile, ReadsAsManyRecordsAsItIsTold) {
    const std::string input = "x y z\n1 1 1\n2 2 2\n3 3 3\n";
    EXPECT_EQ(clip(input, 2), 2);
    EXPECT_EQ(output(), "x y z\n1 1 1\n2 2 2\n");
    EXPECT_EQ(clip(input, 5), 3) << "a file that became shorter";
    EXPECT_EQ(clip(input, 0), 0);
    EXPECT_EQ(output(), "x y z\n");
}

// Records are read ahead in batches that end where a block of the file does.
TEST_F(ClipFile, KeepsRecordsOneByOneWhateverIsReadAhead) {
    std::mt19937 random(11);
    const std::vector<std::string> rests{";", ";3\r", ";" + std::string(5000, 'r'), "", "x"};
    std::string input = "x;y;z\n";
    std::string expected = input;
    std::int32_t kept = 0;
    constexpr std::int32_t records = 4000;
    for (int i = 0; i < records; ++i) {
        const std::string line =
            std::to_string(random() % 16) + ";7" + rests[random() % rests.size()];
        input += line + "\n";
        ElevationPoint point;
        if (parseRecord(line, 'x', ';', point) && model.isInBoundary(point)) {
            expected += line.substr(0, line.find('\r')) + "\n";
            ++kept;
        }
    }
    EXPECT_EQ(clip(input, records), kept);
    EXPECT_TRUE(output() == expected);
    EXPECT_EQ(pulsenote_recorder::events().size(), records + 3U)
        << "with the state, and both ends of the stretch";
}

TEST_F(ClipFile, WritesARecordAfterItsProgressAndBeforeTheNext) {
    std::string input = "x;y;z\n";
    for (int i = 0; i < 200; ++i) {
        input += "50;5;1\n5;5;1\n5;5;1\n";
    }
    const std::string path = directory.write("in.txt", input);
    pulsenote_recorder::tellSteps([&](int step) {
        const int keptBefore = step - (step + 2) / 3;
        EXPECT_EQ(output().size(), static_cast<std::size_t>(6 + 6 * keptBefore)) << step;
    });
    EXPECT_EQ(clipFile(model, path, outputPath, 600, 0, 1), 400);
    pulsenote_recorder::clear();
}

TEST_F(ClipFile, SaysWhyItLeavesAnEmptyFile) {
    EXPECT_EQ(clip("x;z;y\n1;1;1\n", 1), 0);
    EXPECT_EQ(output(), "");
    ASSERT_EQ(pulsenote_recorder::events().size(), 1U);
}

TEST_F(ClipFile, CountsRecordsThatHaveNowhereToGo) {
    outputPath = directory.path("no/such/directory/out.txt");
    EXPECT_EQ(clip("x;y;z\n1;1;1\n", 1), 1);
}

} // namespace
} // namespace veldtrim
