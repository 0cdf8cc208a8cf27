// What a run tells the status library, message by message.

#include "run/command_line.h"
#include "status/report_error.h"
#include "support/temporary_directory.h"

#include <gtest/gtest.h>
#include <pulsenote_recorder.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

namespace veldtrim {
namespace {

using namespace pulsenote_recorder; // NOLINT(google-build-using-namespace): the events' names
using Events = std::vector<Event>;

const Event start = state(1, "Starting Orlagon...", true);
const Event clipping = state(1, "Clipping elevation data...", true);
const Event finished = finish(1, "Finished clipping elevation data with model boundaries");
const Event failedRun = failed(1, "Clipping of elevation data with model boundaries failed.");
const char* const usage =
    "Usage: Veldtrim <input directory path> <output directory name> <boundary file path>";

/// A workspace with boundaries that hold everything near the origin.
class MessageSequence : public testing::Test {
protected:
    MessageSequence() {
        boundaryFile_ = directory_.write(
            "boundary.xml", "<project><TavelDGM><group type=\"boundaries\"><polygon id=\"1\">"
                            "<point x=\"-1e3\" y=\"-1e3\" segmenttype=\"0\"/>"
                            "<point x=\"1e3\" y=\"-1e3\" segmenttype=\"0\"/>"
                            "<point x=\"0\" y=\"1e3\" segmenttype=\"0\"/>"
                            "</polygon></group></TavelDGM></project>");
    }

    void addScan(const std::string& name, int records) {
        std::string bytes = "x;y;z\n";
        for (int i = 0; i < records; ++i) {
            bytes += std::to_string(i) + ";0;0\n";
        }
        static_cast<void>(directory_.write("scans/" + name, bytes));
    }

    int run(std::vector<std::string> arguments) {
        std::vector<const char*> argv{"Veldtrim"};
        std::transform(arguments.begin(), arguments.end(), std::back_inserter(argv),
                       [](const std::string& each) { return each.c_str(); });
        testing::internal::CaptureStdout();
        clear();
        const int result = runCommandLine(static_cast<int>(argv.size()), argv.data());
        console_ = testing::internal::GetCapturedStdout();
        return result;
    }

    int clip() { return run({directory_.path("scans"), "clipped", boundaryFile_}); }

    static void addStretch(Events& events, double from, double to, int steps) {
        events.push_back(clipping);
        events.push_back(progressBegin(from, to, steps));
        for (int i = 0; i < steps; ++i) {
            events.push_back(progressStep(i, false));
        }
        events.push_back(progressEnd());
    }

    static void addClosing(Events& events) {
        events.insert(events.end(), {progressBegin(1, 100, 100), progressStep(100, false),
                                     progressEnd(), finished});
    }

    test::TemporaryDirectory directory_;
    std::string boundaryFile_;
    std::string console_;
};

TEST_F(MessageSequence, OfAWrongCommandLine) {
    struct Case {
        std::vector<std::string> arguments;
        bool pipeMode;
    };
    const std::vector<Case> cases{{{}, false},
                                  {{"a", "b"}, false},
                                  {{"a", "b", "c", "d"}, false},
                                  {{"a", "b", "c", "-Pipe"}, false},
                                  {{"a", "b", "c", "--pipe"}, false},
                                  {{"-pipe"}, true},
                                  {{"a", "b", "-pipe"}, true},
                                  {{"a", "b", "c", "-pipe", "d"}, true}};
    for (const Case& each : cases) {
        EXPECT_EQ(run(each.arguments), 1);
        EXPECT_EQ(events(), (Events{start, instance(each.pipeMode), error(0, usage), failedRun}));
        EXPECT_EQ(console_, std::string(usage) + "\n");
    }
    clear();
    testing::internal::CaptureStdout();
    EXPECT_EQ(runCommandLine(0, nullptr), 1) << "not even the program's name";
    EXPECT_EQ(testing::internal::GetCapturedStdout(), std::string(usage) + "\n");
}

TEST_F(MessageSequence, OfOneFile) {
    constexpr int records = 40;
    addScan("only.xyz", records);
    EXPECT_EQ(clip(), 0);
    Events expected{start, instance(false)};
    addStretch(expected, 0, 100, records);
    addClosing(expected);
    EXPECT_EQ(events(), expected);
}

TEST_F(MessageSequence, OfTwoFiles) {
    addScan("small.xyz", 30);
    addScan("large.txt", 70);
    EXPECT_EQ(clip(), 0);
    const bool smallFirst = events().at(3).steps == 30; // the listing order is the system's
    Events expected{start, instance(false)};
    addStretch(expected, 0, smallFirst ? 30 : 70, smallFirst ? 30 : 70);
    addStretch(expected, smallFirst ? 30 : 70, 100, smallFirst ? 70 : 30);
    addClosing(expected);
    EXPECT_EQ(events(), expected);
}

TEST_F(MessageSequence, WithoutRecordsStandsAtZero) {
    static_cast<void>(directory_.write("scans/header.txt", "x;y;z"));
    EXPECT_EQ(clip(), 0);
    Events expected{start, instance(false), clipping, progressBegin(0, 0, -1), progressEnd()};
    addClosing(expected);
    EXPECT_EQ(events(), expected);
    EXPECT_EQ(test::readBytes(directory_.path("clipped/total_node_count.txt")).substr(0, 1), "0");
}

TEST_F(MessageSequence, OfAFailedCheck) {
    const Events expected{start, instance(true), error(2, "Input directory does not exist"),
                          failedRun};
    EXPECT_EQ(run({directory_.path("nowhere"), "clipped", boundaryFile_, "-pipe"}), 1);
    EXPECT_EQ(events(), expected);
    EXPECT_TRUE(console_.ends_with("boundary file read.\nInput directory does not exist\n"));

    clear();
    testing::internal::CaptureStdout();
    EXPECT_EQ(reportError("as it stands"), 1);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "as it stands\n");
    EXPECT_EQ(events(), (Events{error(2, "as it stands")}));
}

TEST_F(MessageSequence, OfAnUnreadableBoundaryFile) {
    boundaryFile_ = directory_.path("missing.xml");
    EXPECT_EQ(clip(), 1);
    EXPECT_EQ(events(), (Events{start, instance(false),
                                error(1, "Boundary file named " + boundaryFile_ + " not found"),
                                error(2, "boundary file does not exist"), failedRun}));
    EXPECT_FALSE(std::filesystem::exists(directory_.path("clipped")));
}

TEST_F(MessageSequence, OfAnException) {
    addScan("only.xyz", 1);
    static_cast<void>(directory_.write("clipped", "a file in the way"));
    EXPECT_EQ(clip(), 1);
    ASSERT_EQ(events().size(), 4U);
    EXPECT_EQ(events()[2].kind, EventKind::Error);
    EXPECT_EQ(events()[2].code, 0);
    EXPECT_NE(events()[2].text.find("create_directory"), std::string::npos) << events()[2].text;
    EXPECT_EQ(events()[3], failedRun);
    EXPECT_TRUE(console_.ends_with("boundary file read.\n")) << console_;
    EXPECT_EQ(test::readBytes(directory_.path("clipped")), "a file in the way");
}

} // namespace
} // namespace veldtrim
