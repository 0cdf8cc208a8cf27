#include "tiles/preparation.h"

#include "boundary/model/boundary_model.h"
#include "platform/posix/file_state.h"
#include "run/workspace_checks.h"
#include "tiles/tile_index.h"

#include <stdexcept>
#include <utility>

#include <boost/filesystem/exception.hpp>
#include <boost/filesystem/operations.hpp>
#include <boost/filesystem/path.hpp>

namespace veldtrim {

namespace fs = boost::filesystem;

namespace {

/// Throws what a run throws that cannot create its output directory.
[[noreturn]] void failToCreate(const std::string& output, const boost::system::error_code& error) {
    throw fs::filesystem_error("boost::filesystem::create_directory", output, error);
}

/// Makes the checks of a run that precede any change on disk, and fills the model.
std::optional<RunDirectories> check(const Order& order, BoundaryModel& model) {
    const auto [workspace, input] = splitInputPath(order.scans);
    std::optional<RunDirectories> directories =
        checkWorkspace(model, workspace, input, order.output, order.boundary);
    // With a slash at its end, the name of a file or of a dangling link is not found.
    if (directories &&
        fs::exists(fs::symlink_status(outputDirectoryFor(stagingFor(directories->output))))) {
        failToCreate(directories->output,
                     boost::system::errc::make_error_code(boost::system::errc::file_exists));
    }
    return directories;
}

/// Takes the staging directory of a run. Where it cannot be created, nor can its output directory.
std::unique_ptr<FileLock> takeStagingFor(const std::string& output, const Staging& staging) {
    try {
        return takeStaging(staging);
    } catch (const fs::filesystem_error& error) {
        if (error.path1() == staging.root() && !fs::exists(staging.root())) {
            failToCreate(output, error.code());
        }
        throw;
    }
}

/// Completes the plan with what depends on its shards and on the place of the command.
void completePlan(Plan& plan, Division division, const std::vector<Shard>& shards) {
    plan.directory = fs::current_path().string();
    const FileState boundary = plan.clips ? fileState(plan.order.boundary) : FileState();
    plan.boundarySize = boundary.size;
    plan.boundaryModified = boundary.modified;
    plan.shardSize = division.size;
    for (const Shard& shard : shards) {
        std::int64_t bytes = 0;
        for (const Piece& piece : shard) {
            bytes += piece.bytes();
        }
        plan.shardBytes.push_back(bytes);
    }
}

/// Returns how the run is divided; as in the plan that is there, unless the user wants it
/// otherwise.
Division divisionFor(const Staging& staging, const std::vector<Piece>& tiles,
                     const ShardSizes& sizes) {
    if (sizes.shards == 0 && sizes.bytes == 0 && hasPlan(staging)) {
        const Plan plan = loadPlan(staging);
        return {plan.shardSize, static_cast<std::int64_t>(plan.shardCount())};
    }
    return divide(tiles, sizes);
}

/// Publishes the plan, or compares it with the one that was published before. Returns false if that
/// is another one.
bool takePlan(const Staging& staging, Plan& plan, const ShardSizes& sizes,
              const std::vector<Piece>& tiles, const std::string& inputDirectory) {
    const Division division = divisionFor(staging, tiles, sizes);
    const std::vector<Shard> shards = dealOut(tiles, inputDirectory, division);
    completePlan(plan, division, shards);
    if (hasPlan(staging)) {
        return hasPlan(staging, plan, shards);
    }
    publishPlan(staging, plan, shards);
    return true;
}

} // namespace

std::optional<PreparedRun> prepareRun(const Order& order, const std::string& tileIndex,
                                      const ShardSizes& sizes) {
    Plan plan;
    plan.order = order;
    plan.tileIndex = tileIndex;
    BoundaryModel model;
    const std::optional<RunDirectories> directories = check(order, model);
    if (!directories) {
        return {};
    }
    std::vector<Piece> tiles = listTiles(directories->input);
    if (tiles.empty()) {
        fs::create_directory(directories->output); // as one run does
        reportNoInputFiles();
        return {};
    }
    if (!tileIndex.empty()) {
        const TileIndex index = readIndex(tileIndex);
        plan.leftOut = leaveOut(tiles, index, model);
        markUnknown(tiles, index);
    }
    const Staging staging = stagingFor(directories->output);
    std::unique_ptr<FileLock> lock = takeStagingFor(directories->output, staging);
    try {
        if (!takePlan(staging, plan, sizes, tiles, directories->input)) {
            throw std::runtime_error(staging.root() +
                                     " belongs to another plan: the arguments, the scans or the "
                                     "boundary file were others. Give the command of that plan to "
                                     "go on with it, or remove the directory to start over");
        }
    } catch (...) {
        if (!hasPlan(staging)) {
            removeStaging(staging);
        }
        throw;
    }
    return PreparedRun{staging, std::move(plan), std::move(lock)};
}

PreparedRun prepareIndex(const std::string& scans, const std::string& tileIndex,
                         const ShardSizes& sizes) {
    if (!fs::is_directory(scans)) {
        throw std::runtime_error("Input directory does not exist");
    }
    Plan plan;
    plan.order.scans = scans;
    plan.tileIndex = tileIndex;
    plan.clips = false;
    std::vector<Piece> tiles = listTiles(scans);
    markUnknown(tiles, readIndex(tileIndex));
    std::erase_if(tiles, [](const Piece& tile) { return !tile.isMeasured; });

    const Staging staging = stagingFor(tileIndex);
    std::unique_ptr<FileLock> lock = takeStaging(staging);
    Plan complete = plan;
    if (!takePlan(staging, complete, sizes, tiles, scans)) {
        // The tiles have changed since. Nothing is lost: what is not in the index is read again.
        removeStaging(staging);
        lock = takeStaging(staging);
        complete = plan;
        takePlan(staging, complete, sizes, tiles, scans);
    }
    return PreparedRun{staging, std::move(complete), std::move(lock)};
}

std::string outputDirectoryOf(const Order& order) {
    const auto [workspace, input] = splitInputPath(order.scans);
    return runDirectories(workspace, input, order.output).output;
}

} // namespace veldtrim
