#include "tiles/cutting.h"

#include "elevation/record_count.h"
#include "support/temporary_directory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <system_error>
#include <vector>

namespace veldtrim::test {

namespace {

std::string randomTile(std::mt19937& random) {
    std::string text = random() % 2 == 0 ? "x;y;z\n" : "n12 and more\r\n";
    for (auto lines = random() % 30; lines > 0; --lines) {
        text += std::string(random() % 9, '1') + (random() % 3 == 0 ? "\r\n" : "\n");
    }
    return text + std::string(random() % 3, '7');
}

/// The parts of a tile, in order and without the header that stands before all but the first.
struct Parts {
    std::string joined;
    std::int64_t records = 0;
    std::size_t count = 0;
};

Parts partsOf(const TemporaryDirectory& directory, const std::string& path, const std::string& tile,
              std::int64_t size) {
    const std::string header = tile.substr(0, tile.find('\n') + 1);
    std::vector<std::int64_t> borders =
        cutPositions(path, static_cast<std::int64_t>(tile.size()), size);
    borders.push_back(0);
    Parts parts;
    std::int64_t begin = 0;
    for (const std::int64_t end : borders) {
        const std::string copy = directory.path(std::to_string(size) + ' ' + std::to_string(begin));
        parts.records += copyPart(path, begin, end, copy);
        std::string part = readBytes(copy);
        EXPECT_TRUE(part.starts_with(header));
        EXPECT_TRUE(end == 0 || part.ends_with('\n'));
        parts.joined += begin == 0 ? part : part.substr(header.size());
        ++parts.count;
        begin = end;
    }
    return parts;
}

TEST(Cutting, LosesAndRepeatsNothing) {
    std::mt19937 random(1);
    std::size_t most = 0;
    for (int i = 0; i < 60; ++i) {
        const TemporaryDirectory directory;
        const std::string tile = randomTile(random);
        const std::string path = directory.write("a.xyz", tile);
        for (const std::int64_t size : {1, 2, 7, 20, 100, 1000}) {
            const Parts parts = partsOf(directory, path, tile, size);
            EXPECT_EQ(parts.joined, tile);
            EXPECT_EQ(parts.records, countRecords(path)) << tile;
            most = std::max(most, parts.count);
        }
    }
    EXPECT_GT(most, 15U);
}

TEST(Cutting, LeavesWholeWhatItCannotCut) {
    const TemporaryDirectory directory;
    const std::string longHeader = "n12;" + std::string(300'000, 'n') + "\n1;1;1\n1;1;1\n";
    for (const std::string& tile :
         {std::string(), std::string("x;y;z"), std::string("x;y;z\n1;1;1"), longHeader,
          std::string("x;y;z\n1;1;1\n"), std::string("y\n1;1;1\n1;1;1\n")}) {
        const std::string path = directory.write("a.xyz", tile);
        EXPECT_TRUE(cutPositions(path, static_cast<std::int64_t>(tile.size()), 8).empty());
    }
}

TEST(Cutting, AppendsWithoutHeaderFromAnyState) {
    const TemporaryDirectory directory;
    const std::string target = directory.write("target", "x;y;z\n1\nleft over");
    const std::string part = directory.write("part", "x;y;z\n2\n3\n");
    EXPECT_EQ(appendWithoutHeader(part, target, 8), 12);
    EXPECT_EQ(readBytes(target), "x;y;z\n1\n2\n3\n");
    EXPECT_THROW(appendWithoutHeader(directory.path("none"), target, 8), std::system_error);
}

} // namespace

} // namespace veldtrim::test
