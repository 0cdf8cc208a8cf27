#include "tiles/tiles_run.h"

#include "platform/posix/stop_signals.h"
#include "run/workspace_checks.h"
#include "status/console.h"
#include "status/report_state.h"
#include "tiles/local_engine.h"
#include "tiles/merge.h"
#include "tiles/preparation.h"
#include "tiles/shard_watch.h"
#include "tiles/slurm_engine.h"

#include <chrono>
#include <exception>
#include <memory>
#include <optional>
#include <stdexcept>
#include <system_error>
#include <thread>

#include <boost/filesystem/operations.hpp>

namespace veldtrim {

namespace fs = boost::filesystem;

namespace {

AfterMerge afterMerge(bool keepStaging) {
    return keepStaging ? AfterMerge::Keep : AfterMerge::Remove;
}

/// Lets the engine clip the shards that are not done. Returns whether all are done.
bool clipShards(const PreparedRun& run, ShardWatch& shards, const TilesOptions& options) {
    shards.update();
    return options.slurm ? runOnSlurm(run.staging, run.plan, shards, *options.slurm)
                         : clipOnThisMachine(run.staging, shards, options.sizes.jobs);
}

/// Ends a run that is complete as one run ends, which leaves an empty directory if it has no input.
int endRun(const Plan& plan, bool hadInput) {
    if (!hadInput) {
        fs::create_directory(plan.absolute(plan.shownOutput()));
        return reportNoInputFiles();
    }
    reportEndOfProgress();
    return 0;
}

int mergeHere(const Staging& staging, const Plan& plan, AfterMerge after) {
    const std::optional<MergeResult> result = mergeShards(staging, plan, after);
    if (!result) {
        throw std::runtime_error("a job merges the shards in " + staging.root() +
                                 ": give the same command when it has ended");
    }
    return endRun(plan, result->hadInput);
}

/// Tells what the shards of a run said whose jobs went on when its command was ended.
void tellShards(const Staging& staging) {
    try {
        const Plan plan = loadPlan(staging);
        ShardWatch(staging, plan).update();
    } catch (const std::exception&) {
        return; // the command told it before it was ended
    }
}

/// Finishes what a command left that was interrupted after it had published the output directory,
/// or that its jobs did. Returns false if there is none, or if a command is still at work.
bool finishInterrupted(const std::string& output, AfterMerge after) {
    const Staging staging = stagingFor(output);
    if (!isPublished(staging, output)) {
        return false;
    }
    try {
        const FileLock lock(staging.lock());
        if (!lock.isHeld() || !isPublished(staging, output)) {
            return false;
        }
        tellShards(staging);
        finishMerge(staging, after);
        return true;
    } catch (const std::system_error&) {
        return false; // it has just removed the directory
    }
}

} // namespace

int runInShards(const Order& order, const TilesOptions& options) {
    const AfterMerge after = afterMerge(options.keepStaging);
    if (finishInterrupted(outputDirectoryOf(order), after)) {
        reportEndOfProgress();
        return 0;
    }
    const std::optional<PreparedRun> run = prepareRun(order, options.tileIndex, options.sizes);
    if (!run) {
        return 1;
    }
    ShardWatch shards(run->staging, run->plan);
    if (!clipShards(*run, shards, options)) {
        return 1;
    }
    if (!options.slurm) {
        return mergeHere(run->staging, run->plan, after);
    }
    finishMerge(run->staging, shards.hadInput() ? after : AfterMerge::Remove);
    return endRun(run->plan, shards.hadInput());
}

int indexTiles(const std::string& scans, const TilesOptions& options) {
    const PreparedRun run = prepareIndex(scans, options.tileIndex, options.sizes);
    ShardWatch shards(run.staging, run.plan);
    if (!clipShards(run, shards, options)) {
        return 1;
    }
    mergeIndex(run.staging, run.plan);
    return 0;
}

int planRun(const Order& order, const TilesOptions& options) {
    const std::optional<PreparedRun> run = prepareRun(order, options.tileIndex, options.sizes);
    if (!run) {
        return 1;
    }
    writeConsoleLine(std::to_string(run->plan.shardCount()) + " shards in " + run->staging.root());
    return 0;
}

int mergeRun(const std::string& stagingDirectory, bool keepStaging) {
    const Staging staging(fs::canonical(stagingDirectory).string());
    if (!hasPlan(staging) && !fs::exists(staging.publishing())) {
        throw std::runtime_error("no plan in " + staging.root());
    }
    const std::unique_ptr<FileLock> lock = takeStaging(staging);
    if (isPublished(staging, outputDirectoryFor(staging))) {
        finishMerge(staging, afterMerge(keepStaging));
        return 0;
    }
    const Plan plan = loadPlan(staging);
    ShardWatch shards(staging, plan);
    shards.update();
    return mergeHere(staging, plan, afterMerge(keepStaging));
}

int mergeAsJob(const std::string& stagingDirectory) {
    const Staging staging(stagingDirectory);
    const Plan plan = loadPlan(staging);
    constexpr std::chrono::seconds pause{1};
    // A machine that was taken for dead may still be at it.
    while (!isPublished(staging, plan) && !mergeShards(staging, plan, AfterMerge::Hand)) {
        if (stopRequested()) {
            throw std::runtime_error(interruptedText);
        }
        std::this_thread::sleep_for(pause);
    }
    return 0;
}

} // namespace veldtrim
