#include "boundary/boundary_model.h"
#include "elevation/platform_file.h"
#include "run/clip_file.h"
#include "support/temporary_directory.h"

#include <gtest/gtest.h>
#include <pulsenote_recorder.h>

#include <string>
#include <system_error>
#include <vector>

namespace veldtrim {
namespace {

namespace recorder = pulsenote_recorder;

/// The square from (0, 0) to (10, 10).
BoundaryModel square() {
    BoundaryModel model;
    BoundaryPolygon polygon;
    for (const BoundaryVertex vertex : {BoundaryVertex{0, 0}, {10, 0}, {10, 10}, {0, 10}}) {
        polygon.vertexIndices.push_back(model.addVertex(vertex));
    }
    polygon.computeBounds(model.vertices());
    model.addPolygon(polygon);
    return model;
}

class ClipFile : public testing::Test {
protected:
    std::int32_t clip(const std::string& input, std::int32_t records) {
        recorder::clear();
        return clipFile(model_, directory_.write("in.txt", input), output_, records, 7.0, 5.0);
    }

    /// The output with its line ends as on any platform.
    std::string output() {
        std::string bytes = test::readBytes(output_);
        for (std::size_t at = 0;
             lineEnd != "\n" && (at = bytes.find(lineEnd, at)) < bytes.size();) {
            bytes.replace(at, lineEnd.size(), "\n");
            ++at;
        }
        return bytes;
    }

    test::TemporaryDirectory directory_;
    std::string output_ = directory_.path("out.txt");
    BoundaryModel model_ = square();
};

TEST_F(ClipFile, CopiesWhatLiesWithinUnchanged) {
    EXPECT_EQ(clip("x;y;z\r\n"
                   "1;1;first\n"
                   "11;1;outside\n"
                   "10;10.0;  a vertex \r\n"
                   "not a record\n"
                   "\n"
                   "+5.;0e0;an edge\r\r\n"
                   "2;2;not counted",
                   6),
              3);
    EXPECT_EQ(output(), "x;y;z\n1;1;first\n10;10.0;  a vertex \n+5.;0e0;an edge\r\n");
}

TEST_F(ClipFile, ReadsAsManyRecordsAsItIsTold) {
    const std::string input = "x y z\n1 1 1\n2 2 2\n3 3 3\n";
    EXPECT_EQ(clip(input, 2), 2);
    EXPECT_EQ(output(), "x y z\n1 1 1\n2 2 2\n");
    EXPECT_EQ(clip(input, 5), 3) << "a file that became shorter";
    EXPECT_EQ(clip(input, 0), 0);
    EXPECT_EQ(output(), "x y z\n");
    EXPECT_EQ(clip("x;y;z", -1), 0);
    EXPECT_EQ(output(), "x;y;z\n");
}

TEST_F(ClipFile, ReportsItsStretchOfTheRun) {
    clip("x;y;z\n1;1;1\nno record\n2;2;2\n", 3);
    const std::vector<recorder::Event> expected{
        recorder::state(1, "Clipping elevation data...", true),
        recorder::progressBegin(35, 50, 3),
        recorder::progressStep(0, false),
        recorder::progressStep(1, false),
        recorder::progressStep(2, false),
        recorder::progressEnd()};
    EXPECT_EQ(recorder::events(), expected);
}

TEST_F(ClipFile, LeavesAnEmptyFileAndNoWordForAWrongHeader) {
    EXPECT_EQ(clip("x;z;y\n1;1;1\n", 1), 0);
    EXPECT_EQ(output(), "");
    EXPECT_EQ(clipFile(model_, directory_.path("missing.txt"), output_, 4, 0, 1), 0);
    EXPECT_TRUE(recorder::events().empty());
}

TEST_F(ClipFile, CountsRecordsThatHaveNowhereToGo) {
    output_ = directory_.path("no/such/directory/out.txt");
    EXPECT_EQ(clip("x;y;z\n1;1;1\n", 1), 1);
}

#ifdef __linux__
TEST_F(ClipFile, NamesTheOutputThatCannotBeWritten) {
    output_ = "/dev/full";
    try {
        clip("x;y;z\n1;1;1\n", 1);
        FAIL() << "a full disk went unnoticed";
    } catch (const std::system_error& error) {
        EXPECT_STREQ(error.what(), "cannot write /dev/full: No space left on device");
    }
}
#endif

} // namespace
} // namespace veldtrim
