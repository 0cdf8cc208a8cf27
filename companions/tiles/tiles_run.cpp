#include "tiles/tiles_run.h"

#include "platform/posix/stop_signals.h"
#include "run/workspace_checks.h"
#include "status/console.h"
#include "status/report_state.h"
#include "tiles/engine.h"
#include "tiles/merge.h"
#include "tiles/preparation.h"
#include "tiles/shard_watch.h"

#include <algorithm>
#include <chrono>
#include <stdexcept>
#include <system_error>

#include <boost/filesystem/operations.hpp>

namespace veldtrim {

namespace fs = boost::filesystem;

namespace {

/// Stops the engine and all its jobs, which remove what they have not published.
void stop(ChildProcess& engine) {
    constexpr int patience = 3000; // milliseconds
    engine.stop();
    // GNU parallel waits for its jobs at the first signal and ends them at the second.
    if (!engine.waitFor(patience)) {
        engine.stop();
        engine.wait();
    }
}

/// Waits for the end of the engine, and tells what the shards say. Returns false if a signal asked
/// to stop.
bool watch(ChildProcess& engine, ShardWatch& shards) {
    using Clock = std::chrono::steady_clock;
    using std::chrono::milliseconds;
    constexpr milliseconds shortestPause{100};
    milliseconds pause = shortestPause;
    while (!engine.waitFor(static_cast<int>(pause.count()))) {
        if (stopRequested()) {
            stop(engine);
            return false;
        }
        const auto begun = Clock::now();
        shards.update();
        // A directory of many shards takes long to read, which must not slow down the jobs.
        const auto taken = std::chrono::duration_cast<milliseconds>(Clock::now() - begun);
        pause = std::max(shortestPause, 20 * taken);
    }
    shards.update();
    return true;
}

/// Lets the engine clip the shards that are not done. Returns whether all are done.
bool clipShards(const Staging& staging, ShardWatch& shards, int jobs) {
    fs::remove_all(staging.failures());
    fs::create_directory(staging.failures());
    std::string numbers;
    for (const std::size_t number : shards.pending()) {
        numbers += std::to_string(number) + '\n';
    }
    if (numbers.empty()) {
        return true;
    }
    fs::create_directory(staging.engine());
    writeWhole(staging.engine() + "/numbers", numbers);
    noteStopSignals();
    const std::unique_ptr<ChildProcess> engine = startParallel(staging, "engine/numbers", jobs);
    if (!watch(*engine, shards)) {
        throw std::runtime_error("interrupted: give the same command to go on");
    }
    if (shards.pending().empty()) {
        return true;
    }
    if (shards.tellFailures() == 0) {
        throw std::runtime_error("shards were not clipped: see " + staging.engineLog());
    }
    reportState("Give the same command to go on; what is done is in " + staging.root());
    return false;
}

int mergeAndReport(const Staging& staging, const Plan& plan, bool keepStaging) {
    if (!mergeShards(staging, plan, keepStaging).hadInput) {
        return reportNoInputFiles();
    }
    reportEndOfProgress();
    return 0;
}

/// Finishes what a command left that was interrupted after it had published the output directory.
/// Returns false if there is none, or if it is still at work.
bool finishInterrupted(const std::string& output) {
    const Staging staging = stagingFor(output);
    if (!fs::exists(staging.publishing())) {
        return false;
    }
    try {
        const FileLock lock(staging.lock());
        return lock.isHeld() && finishMerge(staging, output);
    } catch (const std::system_error&) {
        return false; // it has just removed the directory
    }
}

} // namespace

int runInShards(const Order& order, const TilesOptions& options) {
    if (finishInterrupted(outputDirectoryOf(order))) {
        reportEndOfProgress();
        return 0;
    }
    const std::optional<PreparedRun> run = prepareRun(order, options.tileIndex, options.sizes);
    if (!run) {
        return 1;
    }
    ShardWatch shards(run->staging, run->plan);
    shards.update();
    if (!clipShards(run->staging, shards, options.sizes.jobs)) {
        return 1;
    }
    return mergeAndReport(run->staging, run->plan, options.keepStaging);
}

int indexTiles(const std::string& scans, const TilesOptions& options) {
    const PreparedRun run = prepareIndex(scans, options.tileIndex, options.sizes);
    ShardWatch shards(run.staging, run.plan);
    shards.update();
    if (!clipShards(run.staging, shards, options.sizes.jobs)) {
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
    if (finishMerge(staging, outputDirectoryFor(staging))) {
        return 0;
    }
    const Plan plan = loadPlan(staging);
    ShardWatch shards(staging, plan);
    shards.update();
    return mergeAndReport(staging, plan, keepStaging);
}

} // namespace veldtrim
