// What a run tells the status library, message by message.

#include "run/command_line.h"
#include "status/report_error.h"
#include "support/temporary_directory.h"

#include <gtest/gtest.h>
#include <pulsenote_recorder.h>

#include <string>
#include <vector>

namespace veldtrim {
namespace {

using namespace pulsenote_recorder; // NOLINT(google-build-using-namespace): the events' names
using Events = std::vector<Event>;

const Event start = state("Starting Orlagon...");
const Event failedRun = failed("Clipping of elevation data with model boundaries failed.");

class MessageSequence : public testing::Test {
protected:
    void addScan(const std::string& name, int records) {
        std::string bytes = "x;y;z\n";
        for (int i = 0; i < records; ++i) {
            bytes += std::to_string(i) + ";0;0\n";
        }
        static_cast<void>(directory_.write("scans/" + name, bytes));
    }

    int clip(std::vector<const char*> more = {}) {
        const std::string scans = directory_.path("scans");
        const std::string boundaryFile =
            directory_.write("boundary.xml", "<project><TavelDGM/></project>");
        std::vector<const char*> argv{"Veldtrim", scans.c_str(), "clipped", boundaryFile.c_str()};
        argv.insert(argv.end(), more.begin(), more.end());
        clear();
        return runCommandLine(static_cast<int>(argv.size()), argv.data());
    }

    struct Stretch {
        double from;
        double to;
        int steps; // -1 for a file without a line feed
    };

    // What a run says that clips one file for each stretch.
    static Events clipping(bool pipeMode, const std::vector<Stretch>& stretches) {
        Events events{start, instance(pipeMode)};
        for (const auto& [from, to, steps] : stretches) {
            events.push_back(state("Clipping elevation data..."));
            events.push_back(progressBegin(from, to, steps));
            for (int i = 0; i < steps; ++i) {
                events.push_back(progressStep(i));
            }
            events.push_back(progressEnd());
        }
        events.insert(events.end(),
                      {progressBegin(1, 100, 100), progressStep(100), progressEnd(),
                       finish("Finished clipping elevation data with model boundaries")});
        return events;
    }

    test::TemporaryDirectory directory_;
};

TEST_F(MessageSequence, OfAWrongCommandLine) {
    const Event usage = error(0, "Usage: Veldtrim <input directory path> <output directory name> "
                                 "<boundary file path>");
    EXPECT_EQ(clip({"more"}), 1);
    EXPECT_EQ(events(), (Events{start, instance(false), usage, failedRun}));
    EXPECT_EQ(clip({"more", "-pipe"}), 1);
    EXPECT_EQ(events(), (Events{start, instance(true), usage, failedRun}));
    EXPECT_EQ(runCommandLine(0, nullptr), 1) << "not even the program's name";
}

TEST_F(MessageSequence, OfOneFile) {
    addScan("only.xyz", 40);
    EXPECT_EQ(clip({"-pipe"}), 0);
    EXPECT_EQ(events(), clipping(true, {{0, 100, 40}}));
}

TEST_F(MessageSequence, OfTwoFiles) {
    addScan("small.xyz", 30);
    addScan("large.txt", 70);
    EXPECT_EQ(clip(), 0);
    // The order of the files is the system's.
    const Events smallFirst = clipping(false, {{0, 30, 30}, {30, 100, 70}});
    const Events largeFirst = clipping(false, {{0, 70, 70}, {70, 100, 30}});
    EXPECT_EQ(events(), events() == largeFirst ? largeFirst : smallFirst);
}

TEST_F(MessageSequence, WithoutRecordsStandsAtZero) {
    static_cast<void>(directory_.write("scans/header.txt", "x;y;z"));
    EXPECT_EQ(clip(), 0);
    EXPECT_EQ(events(), clipping(false, {{0, 0, -1}}));
}

TEST_F(MessageSequence, OfAReportedError) {
    clear();
    testing::internal::CaptureStdout();
    EXPECT_EQ(reportError("as it stands"), 1);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "as it stands\n");
    EXPECT_EQ(events(), (Events{error(2, "as it stands")}));
}

} // namespace
} // namespace veldtrim
