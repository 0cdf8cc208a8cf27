// What a run tells the status library, message by message.

#include "run/command_line.h"
#include "support/temporary_directory.h"

#include <gtest/gtest.h>
#include <pulsenote_recorder.h>

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace veldtrim {
namespace {

using pulsenote_recorder::clear;
using pulsenote_recorder::events;
using Events = std::vector<std::string>;

const std::string start = "state 1 true Starting Orlagon...";

class MessageSequence : public testing::Test {
protected:
    void addScan(const std::string& name, int records) {
        std::string bytes = "x;y;z\n";
        for (int i = 0; i < records; ++i) {
            bytes += "7;0;0\n";
        }
        static_cast<void>(directory.write("scans/" + name, bytes));
    }

    int clip(std::vector<const char*> more = {"-pipe"}) {
        const std::string scans = directory.path("scans");
        const std::string boundaryFile =
            directory.write("boundary.xml", "<project><TavelDGM/></project>");
        std::vector<const char*> argv{"Veldtrim", scans.c_str(), "clipped", boundaryFile.c_str()};
        argv.insert(argv.end(), more.begin(), more.end());
        clear();
        return runCommandLine(static_cast<int>(argv.size()), argv.data());
    }

    using Stretch = std::pair<std::string, int>; // how it begins, and its steps

    // What a run says that clips one file for each stretch.
    static Events clipping(const std::vector<Stretch>& stretches) {
        Events events{start, "instance true"};
        for (const auto& [begin, steps] : stretches) {
            events.insert(events.end(), {"state 1 true Clipping elevation data...", begin});
            for (int i = 0; i < steps; ++i) {
                events.push_back("step " + std::to_string(i) + " false");
            }
            events.emplace_back("end");
        }
        events.insert(events.end(),
                      {"begin 1 100 100", "step 100 false", "end",
                       "finish 1 Finished clipping elevation data with model boundaries"});
        return events;
    }

    test::TemporaryDirectory directory;
};

TEST_F(MessageSequence, OfAWrongCommandLine) {
    EXPECT_EQ(clip({"more"}), 1);
    EXPECT_EQ(events(), (Events{start, "instance false",
                                "error 0 Usage: Veldtrim <input directory path> "
                                "<output directory name> <boundary file path>",
                                "failed 1 Clipping of elevation data with model boundaries "
                                "failed."}));
    EXPECT_EQ(clip({"more", "-pipe"}), 1);
    EXPECT_EQ(events().at(1), "instance true");
    EXPECT_EQ(runCommandLine(0, nullptr), 1) << "not even the program's name";
}

TEST_F(MessageSequence, OfTwoFiles) {
    addScan("small.xyz", 30);
    addScan("large.txt", 70);
    EXPECT_EQ(clip(), 0);
    // The order of the files is the system's.
    const Events smallFirst = clipping({{"begin 0 30 30", 30}, {"begin 30 100 70", 70}});
    const Events largeFirst = clipping({{"begin 0 70 70", 70}, {"begin 70 100 30", 30}});
    EXPECT_EQ(events(), events() == largeFirst ? largeFirst : smallFirst);
}

TEST_F(MessageSequence, WithoutRecordsStandsAtZero) {
    for (const auto& [header, begin] :
         {std::pair{"x;y;z", "begin 0 0 -1"}, std::pair{"x;y;z\n", "begin 0 0 0"}}) {
        static_cast<void>(directory.write("scans/header.txt", header));
        EXPECT_EQ(clip(), 0);
        EXPECT_EQ(events(), clipping({{begin, 0}}));
        std::filesystem::remove_all(directory.path("clipped"));
    }
}

} // namespace
} // namespace veldtrim
