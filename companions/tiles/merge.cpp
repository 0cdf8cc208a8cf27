#include "tiles/merge.h"

#include "elevation/record_count.h"
#include "platform/new_name.h"
#include "platform/posix/file_state.h"
#include "platform/posix/stop_signals.h"
#include "run/total_file.h"
#include "status/report_state.h"
#include "tiles/attempt.h"
#include "tiles/joining.h"
#include "tiles/planning.h"
#include "tiles/tile_index.h"

#include <exception>
#include <stdexcept>
#include <system_error>

#include <boost/filesystem/exception.hpp>
#include <boost/filesystem/operations.hpp>
#include <boost/filesystem/path.hpp>

namespace veldtrim {

namespace fs = boost::filesystem;

namespace {

/// Takes a shard back whose results are not what was published, after a power failure perhaps.
[[noreturn]] void takeBack(const Staging& staging, std::size_t number) {
    fs::rename(staging.done(number),
               randomName(staging.attempts() + '/' + std::to_string(number) + "-damaged"));
    throw std::runtime_error("the results of shard " + std::to_string(number) +
                             " are damaged: give the same command to clip it again");
}

/// Moves the clipped tiles of a shard, and notes its clipped parts. A file that an earlier merge
/// has moved is at its new place.
void moveTiles(const Staging& staging, std::size_t number, const Shard& shard,
               const ShardReport& report, PartsOfTiles& parts) {
    const std::string output = staging.done(number) + '/' + outputFolder + '/';
    for (const auto& [piece, records] : report.partRecords) {
        parts[shard.at(piece).name].records += records;
    }
    for (const ClippedPiece& file : report.files) {
        const Piece& piece = shard.at(file.piece);
        std::string source = output + pieceFile(file.piece);
        if (piece.isPart()) {
            parts[piece.name].files[piece.begin] = {std::move(source), file.size, number};
            continue;
        }
        if (piece.name == totalFileName) {
            continue; // the total takes its place, as in one run
        }
        const std::string target = staging.merged() + '/' + piece.name;
        boost::system::error_code error;
        fs::rename(source, target, error);
        if (error && error != boost::system::errc::no_such_file_or_directory) {
            throw fs::filesystem_error("cannot move", source, target, error);
        }
        if (fileState(target).size != file.size) {
            fs::remove(target);
            takeBack(staging, number);
        }
    }
}

void joinTiles(const Staging& staging, const Plan& plan, const PartsOfTiles& parts) {
    for (const auto& [name, tile] : parts) {
        toRecordCount(tile.records, (fs::path(plan.shownInput()) / name).string());
        if (name == totalFileName || tile.files.empty()) {
            continue;
        }
        if (const std::size_t damaged =
                joinParts(tile, staging.joining(), staging.merged(), name)) {
            takeBack(staging, damaged);
        }
    }
}

void publish(const Staging& staging, const Plan& plan, std::int64_t total) {
    const std::string shownTotal = (fs::path(plan.shownOutput()) / totalFileName).string();
    const std::string merged = staging.merged();
    if (const std::error_code error = writeTotal(merged + '/' + totalFileName, total)) {
        throw std::system_error(error, "cannot write " + shownTotal);
    }
    // From here on, an output directory of this number is this one.
    writeWhole(staging.publishing(), std::to_string(fileState(merged).number));
    const std::string output = plan.absolute(plan.shownOutput());
    if (const std::error_code error = renameToNewName(merged, output)) {
        throw std::system_error(error, "cannot create output directory " + plan.shownOutput());
    }
}

/// Adds what the shard found to what is known of its tiles.
void collectBounds(const Shard& shard, const ShardReport& report, TileIndex& known) {
    for (const auto& [piece, content] : report.bounds) {
        const Piece& tile = shard.at(piece);
        const auto [place, isNew] = known.try_emplace(tile.name);
        if (isNew) {
            place->second = {tile.size, tile.modified, content};
        } else {
            place->second.content.add(content);
        }
    }
}

void updateIndexOf(const Plan& plan, const TileIndex& known) {
    const std::string input = plan.absolute(plan.shownInput());
    updateIndex(plan.absolute(plan.tileIndex), plan.shownInput(), listTiles(input), known);
}

} // namespace

ShardReport loadDone(const Staging& staging, std::size_t number) {
    if (!isDone(staging, number)) {
        throw std::runtime_error("shard " + std::to_string(number) + " has not been clipped");
    }
    ShardReport report;
    if (!readReport(readWhole(staging.done(number) + '/' + reportFile), report)) {
        takeBack(staging, number);
    }
    return report;
}

std::optional<MergeResult> mergeShards(const Staging& staging, const Plan& plan, AfterMerge after) {
    const FileLock lock(staging.mergeLock());
    if (!lock.isHeld()) {
        return {};
    }
    MergeResult result;
    result.hadInput = plan.leftOut > 0;
    std::int64_t total = 0;
    TileIndex known;
    PartsOfTiles parts;
    fs::create_directory(staging.merged());
    fs::create_directory(staging.joining());
    for (std::size_t number = 1; number <= plan.shardCount(); ++number) {
        if (stopRequested()) {
            throw std::runtime_error(interruptedText);
        }
        const ShardReport report = loadDone(staging, number);
        result.hadInput |= report.hadInput;
        total += report.total;
        const Shard shard = loadShard(staging, number);
        moveTiles(staging, number, shard, report, parts);
        collectBounds(shard, report, known);
    }
    if (result.hadInput) {
        joinTiles(staging, plan, parts);
        publish(staging, plan, total);
    }
    if (!known.empty()) {
        try {
            updateIndexOf(plan, known);
        } catch (const std::exception& error) {
            reportState(error.what()); // the next run reads these tiles again
        }
    }
    finishMerge(staging,
                !result.hadInput && after == AfterMerge::Keep ? AfterMerge::Remove : after);
    return result;
}

void mergeIndex(const Staging& staging, const Plan& plan) {
    TileIndex known;
    for (std::size_t number = 1; number <= plan.shardCount(); ++number) {
        collectBounds(loadShard(staging, number), loadDone(staging, number), known);
    }
    updateIndexOf(plan, known);
    removeStaging(staging);
}

bool isPublished(const Staging& staging, const std::string& outputDirectory) {
    const std::string number = readWhole(staging.publishing());
    const FileState output = fileState(outputDirectory);
    return !number.empty() && output.exists && number == std::to_string(output.number);
}

bool isPublished(const Staging& staging, const Plan& plan) {
    return isPublished(staging, plan.absolute(plan.shownOutput()));
}

void finishMerge(const Staging& staging, AfterMerge after) {
    try {
        switch (after) {
        case AfterMerge::Remove:
            removeStaging(staging);
            break;
        case AfterMerge::Keep:
            fs::remove(staging.publishing()); // there is nothing left to finish
            break;
        case AfterMerge::Hand:
            removeResults(staging);
            break;
        }
    } catch (const fs::filesystem_error& error) {
        reportState(error.what()); // on NFS, for example, while a late attempt has a file open
    }
}

} // namespace veldtrim
