#include "tiles/shard_report.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace veldtrim::test {

namespace {

const RunMessage start{"state", 1, "Starting Orlagon..."};
const RunMessage clipping{"state", 1, "Clipping elevation data..."};
const RunMessage noInput{"error", 2, "There are no input files."};

RunMessage state(const std::string& text) {
    return {"state", 1, text};
}

/// A tile, a part of a tile that is not its first, and a tile that could not be read at the start.
Shard someShard() {
    Shard shard(3);
    shard[0].name = "a.xyz";
    shard[1].name = "b\n.txt";
    shard[1].begin = 10;
    shard[2].name = "c.xyz";
    shard[2].isReadable = false;
    return shard;
}

const RunMessage headerOfA = state("Skipping input file ./in/0.xyz: the header line is empty");
const RunMessage noA =
    state("Skipping input file ./in/0.xyz: it cannot be read: Stale file handle");
const RunMessage noC = state("Skipping input file ./in/2.xyz: it cannot be read: No such file");
const RunMessage noOutput = state("Cannot create output file ./out/1.xyz: No space left on device: "
                                  "its records are counted but not written");
const RunMessage full{"error", 0, "cannot write ./out/1.xyz: No space left on device"};

TEST(ShardReport, JudgesWhatARunSaid) {
    struct Case {
        std::vector<RunMessage> said;
        std::string failure;
        std::int64_t clipped;
    };
    const std::vector<Case> cases{
        {{start, noC, clipping, clipping}, "", 1},
        {{start, noC, headerOfA, clipping}, "", 0},
        {{start, clipping, clipping, clipping}, "", 2},
        {{start, clipping, clipping}, "Veldtrim did not find all tiles of the shard", 1},
        {{}, "Veldtrim did not find all tiles of the shard", -1},
        {{start, noC, noA, clipping}, noA.text, 0},
        {{start, noC, noOutput, clipping, clipping}, noOutput.text, 1},
        {{start, noC, clipping, full}, full.text, 0},
        {{start, noC, clipping, clipping, state("Something new")}, "Something new", 1},
    };
    for (const auto& each : cases) {
        ShardReport report;
        judge(each.said, someShard(), report);
        EXPECT_EQ(report.failure, each.failure);
        EXPECT_EQ(report.clipped, each.clipped);
        EXPECT_TRUE(report.hadInput);
    }
    ShardReport report;
    judge({start, headerOfA, noInput}, Shard(1), report);
    EXPECT_TRUE(report.failure.empty() && !report.hadInput);
}

TEST(ShardReport, NamesTheUsersPaths) {
    Plan plan;
    plan.order = {"area/scans", "clipped", "some boundary.xml"};
    const Shard shard = someShard();
    const auto shown = [&](const std::string& text) { return withUsersPaths(text, plan, shard); };
    EXPECT_EQ(shown(headerOfA.text),
              "Skipping input file area/scans/a.xyz: the header line is empty");
    EXPECT_EQ(shown(full.text), "cannot write area/clipped/b\n.txt: No space left on device");
    EXPECT_EQ(shown("Boundary file named ./boundary.xml not found"),
              "Boundary file named some boundary.xml not found");
    for (const char* same : {"nothing", "./in/", "./in/9.xyz", "./in/x.xyz", "./in/0.txt"}) {
        EXPECT_EQ(shown(same), same);
    }
}

TEST(ShardReport, IsReadAsItWasWritten) {
    ShardReport report;
    report.total = std::int64_t{1} << 40;
    report.files = {{3, std::int64_t{1} << 35}};
    report.partRecords = {{1, 7}};
    report.messages = {{"state", 1, "not \xff UTF-8"}};
    report.bounds = {{0, {true, 5, {0.1, 1e-300, 1.0 / 3.0, 1e300}}}, {1, {}}};
    const std::string text = reportText(report);
    ShardReport copy;
    ASSERT_TRUE(readReport(text, copy));
    EXPECT_EQ(reportText(copy), text);
    EXPECT_EQ(copy.bounds[0].second.bounds.xMax, 1.0 / 3.0);
    EXPECT_TRUE(copy.bounds[1].second.bounds.isEmpty());
    for (std::size_t size = 0; size + 1 < text.size(); ++size) {
        ShardReport damaged;
        EXPECT_FALSE(readReport(text.substr(0, size), damaged)) << size;
    }
}

TEST(ShardReport, ReadsOnlyMessages) {
    const auto messages = readRunMessages("{\"kind\":\"progress\",\"position\":1,\"flag\":false}\n"
                                          "{\"kind\":\"error\",\"code\":2,\"text\":\"x\"}\nnone\n"
                                          "{\"kind\":\"state\",\"code\":1,\"te");
    ASSERT_EQ(messages.size(), 1U);
    EXPECT_EQ(messages[0].kind + messages[0].text, "errorx");
}

} // namespace

} // namespace veldtrim::test
