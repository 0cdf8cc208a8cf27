#include "tiles/planning.h"

#include "tiles/name_text.h"

#include "support/temporary_directory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <map>
#include <random>
#include <stdexcept>
#include <string>

namespace veldtrim::test {

namespace {

TEST(NameText, HoldsAllBytes) {
    std::string all;
    for (int byte = 1; byte < 256; ++byte) {
        all += static_cast<char>(byte);
    }
    const std::string text = encodeName(all);
    EXPECT_TRUE(std::all_of(text.begin(), text.end(), [](char c) { return c > ' ' && c <= '~'; }));
    EXPECT_EQ(decodeName(text), all);
    EXPECT_EQ(encodeName("tile_1-2.xyz"), "tile_1-2.xyz");
    for (const char* bad : {"%", "%4", "%G1", "a%", "%%41"}) {
        EXPECT_THROW(decodeName(bad), std::runtime_error) << bad;
    }
}

std::vector<Piece> randomTiles(std::mt19937& random, const TemporaryDirectory& directory) {
    std::vector<Piece> tiles;
    for (auto i = random() % 20 + 1; i > 0; --i) {
        std::string content = "x;y;z\n";
        for (auto lines = random() % 400; lines > 0; --lines) {
            content += "1;1;1\n";
        }
        Piece tile;
        tile.name = std::to_string(i) + "\n.xyz";
        tile.size = static_cast<std::int64_t>(content.size());
        static_cast<void>(directory.write(tile.name, content));
        tiles.push_back(tile);
    }
    return tiles;
}

TEST(Planning, DealsOutEveryByteOnce) {
    std::mt19937 random(2);
    for (int i = 0; i < 40; ++i) {
        const TemporaryDirectory directory;
        const std::vector<Piece> tiles = randomTiles(random, directory);
        const Division division =
            divide(tiles, {.shards = static_cast<std::int64_t>(random() % 9 + 1)});
        const std::vector<Shard> shards = dealOut(tiles, directory.path(""), division);
        EXPECT_LE(shards.size(), static_cast<std::size_t>(division.count));
        std::map<std::string, std::map<std::int64_t, std::int64_t>> found;
        for (const Shard& shard : shards) {
            EXPECT_FALSE(shard.empty());
            for (const Piece& piece : shard) {
                found[piece.name][piece.begin] += piece.bytes();
            }
            EXPECT_EQ(shardText(readShard(shardText(shard))), shardText(shard));
        }
        for (const Piece& tile : tiles) {
            std::int64_t end = 0;
            for (const auto& [begin, bytes] : found[tile.name]) {
                EXPECT_EQ(begin, end);
                end += bytes;
            }
            EXPECT_EQ(end, tile.size);
        }
    }
}

TEST(Planning, LoadsShardsEvenly) {
    std::vector<Piece> tiles(1000);
    for (std::size_t i = 0; i < tiles.size(); ++i) {
        tiles[i].size = static_cast<std::int64_t>(i * i);
    }
    std::int64_t lightest = std::numeric_limits<std::int64_t>::max();
    std::int64_t heaviest = 0;
    for (const Shard& shard : dealOut(tiles, "", {10'000'000, 7})) {
        std::int64_t bytes = 0;
        for (const Piece& piece : shard) {
            bytes += piece.bytes();
        }
        lightest = std::min(lightest, bytes);
        heaviest = std::max(heaviest, bytes);
    }
    EXPECT_LT(static_cast<double>(heaviest - lightest), 0.01 * static_cast<double>(heaviest));
}

TEST(Planning, ChoosesTheSizeOfShards) {
    constexpr std::int64_t mega = 1'000'000;
    std::vector<Piece> tiles(100);
    for (Piece& tile : tiles) {
        tile.size = 10 * mega;
    }
    EXPECT_EQ(divide(tiles, {.shards = 10}).size, 100 * mega);
    EXPECT_EQ(divide(tiles, {.bytes = 50 * mega}).count, 20);
    EXPECT_EQ(divide(tiles, {.jobs = 2}).count, 16);
    EXPECT_EQ(divide(tiles, {.jobs = 1000}).size, std::int64_t{8} << 20);
    EXPECT_THROW(divide(tiles, {.bytes = 1}), std::runtime_error);
    EXPECT_GE(divide({}, {}).size, 1);
}

} // namespace

} // namespace veldtrim::test
