#include "tiles/preparation.h"

#include "boundary/model/boundary_model.h"
#include "platform/posix/file_state.h"
#include "run/workspace_checks.h"

#include <stdexcept>
#include <utility>

#include <boost/filesystem/exception.hpp>
#include <boost/filesystem/operations.hpp>
#include <boost/filesystem/path.hpp>

namespace veldtrim {

namespace fs = boost::filesystem;

namespace {

/// Makes the checks of a run that precede any change on disk.
std::optional<RunDirectories> check(const Order& order) {
    const auto [workspace, input] = splitInputPath(order.scans);
    BoundaryModel model;
    std::optional<RunDirectories> directories =
        checkWorkspace(model, workspace, input, order.output, order.boundary);
    if (directories && fs::exists(fs::symlink_status(directories->output))) {
        throw fs::filesystem_error(
            "cannot create output directory", directories->output,
            boost::system::errc::make_error_code(boost::system::errc::file_exists));
    }
    return directories;
}

Plan makePlan(const Order& order, Division division, const std::vector<Shard>& shards) {
    Plan plan;
    plan.order = order;
    plan.directory = fs::current_path().string();
    const FileState boundary = fileState(order.boundary);
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
    return plan;
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

/// Publishes the plan, or compares it with the one that was published before.
Plan takePlan(const Staging& staging, const Order& order, const ShardSizes& sizes,
              const std::vector<Piece>& tiles, const std::string& inputDirectory) {
    const Division division = divisionFor(staging, tiles, sizes);
    const std::vector<Shard> shards = dealOut(tiles, inputDirectory, division);
    const Plan plan = makePlan(order, division, shards);
    if (!hasPlan(staging)) {
        publishPlan(staging, plan, shards);
    } else if (!hasPlan(staging, plan, shards)) {
        throw std::runtime_error(
            staging.root() +
            " belongs to another plan: the arguments, the scans or the boundary file were others. "
            "Give the command of that plan to go on with it, or remove the directory to start "
            "over");
    }
    return plan;
}

} // namespace

std::optional<PreparedRun> prepareRun(const Order& order, const ShardSizes& sizes) {
    const std::optional<RunDirectories> directories = check(order);
    if (!directories) {
        return {};
    }
    const std::vector<Piece> tiles = listTiles(directories->input);
    if (tiles.empty()) {
        reportNoInputFiles();
        return {};
    }
    const Staging staging = stagingFor(directories->output);
    std::unique_ptr<FileLock> lock = takeStaging(staging);
    try {
        Plan plan = takePlan(staging, order, sizes, tiles, directories->input);
        return PreparedRun{staging, std::move(plan), std::move(lock)};
    } catch (...) {
        if (!hasPlan(staging)) {
            removeStaging(staging);
        }
        throw;
    }
}

std::string outputDirectoryOf(const Order& order) {
    const auto [workspace, input] = splitInputPath(order.scans);
    return runDirectories(workspace, input, order.output).output;
}

} // namespace veldtrim
