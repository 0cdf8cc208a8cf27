/// What a run over a shard said and left.
#pragma once

#include "tiles/plan.h"
#include "tiles/tile_bounds.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace veldtrim {

/// A message of a run. The kinds are those of the run's JSON lines: state, error, failed, finish.
struct RunMessage {
    std::string kind;
    int code = 0;
    std::string text;
};

/// The names under which an attempt presents its pieces to the run, and itself the run's results:
/// numbers, so that no name of the user's can mislead the run or be lost in its messages.
std::string pieceFile(std::size_t piece);
inline constexpr const char* inputFolder = "in";
inline constexpr const char* outputFolder = "out";
inline constexpr const char* boundaryLink = "boundary.xml";

/// An output file of a shard.
struct ClippedPiece {
    std::size_t piece = 0; ///< its index in the shard
    std::int64_t size = 0; ///< in bytes, by which a file that was damaged later is found
};

/// What is known of a shard when it has been clipped, or when an attempt has failed.
struct ShardReport {
    std::int64_t total = 0;   ///< number of kept records
    bool hadInput = true;     ///< whether a piece was taken as an input file
    std::int64_t clipped = 0; ///< how many pieces were clipped, the first parts of tiles included
    std::vector<ClippedPiece> files;

    /// For the parts of tiles: how many records each contains, by its index in the shard.
    std::vector<std::pair<std::size_t, std::int64_t>> partRecords;

    /// For the tile index: what is known of pieces, by their indices in the shard.
    std::vector<std::pair<std::size_t, TileBounds>> bounds;

    /// What else the run said, in its own words: for the user, except for its paths.
    std::vector<RunMessage> messages;

    /// Why the attempt failed; empty if it did not. May be a message's text.
    std::string failure;

    bool isFinal = false; ///< whether no other attempt follows the one that failed
};

/// Returns the messages in the JSON lines of a run, without its progress.
std::vector<RunMessage> readRunMessages(std::string_view lines);

/// Judges the messages of a run that ended with `exitCode` over the shard and sorts them into the
/// report. A piece that could not be read now but could when the plan was made, and a file that
/// could not be created, are failures: another attempt, on another machine perhaps, can succeed. So
/// is a piece of which the run said nothing.
void judge(const std::vector<RunMessage>& said, const Shard& shard, ShardReport& report);

/// Returns the text of a message with the paths that the user knows in place of those of the
/// attempt.
std::string withUsersPaths(const std::string& text, const Plan& plan, const Shard& shard);

/// Returns the report as JSON, and reads it. The reader returns false if the text is damaged.
std::string reportText(const ShardReport& report);
bool readReport(std::string_view text, ShardReport& report);

} // namespace veldtrim
