#include "tiles/local_engine.h"

#include "platform/posix/child_process.h"
#include "platform/posix/orphans.h"
#include "platform/posix/own_program.h"
#include "platform/posix/stop_signals.h"
#include "status/report_state.h"

#include <algorithm>
#include <chrono>
#include <memory>
#include <stdexcept>
#include <string>
#include <system_error>
#include <thread>
#include <vector>

#include <boost/filesystem/operations.hpp>

namespace veldtrim {

namespace fs = boost::filesystem;

namespace {

/// How long an attempt may take to remove what it has not published, in milliseconds.
constexpr int patience = 3000;

std::vector<std::string> parallelWords(int jobs) {
    std::vector<std::string> words{"parallel", "--plain", "--will-cite", "--ungroup"};
    const auto option = [&](const char* name, const std::string& value) {
        words.insert(words.end(), {name, value});
    };
    option("--jobs", std::to_string(jobs));
    // An attempt that was killed cannot try again by itself.
    option("--retries", "2");
    // What cannot be done is told soon, and the others are not begun.
    option("--halt", "soon,fail=1");
    // When it is to stop, an attempt removes what it has not published.
    option("--termseq", "TERM," + std::to_string(patience) + ",KILL,100");
    words.insert(words.end(), {"\"$VELDTRIM_TILES\"", "clip", ".", "{}"});
    return words;
}

/// Starts the clipping of the shards in a process group of its own.
std::unique_ptr<ChildProcess> startEngine(const Staging& staging,
                                          const std::vector<std::size_t>& shards, int jobs) {
    std::string numbers;
    for (const std::size_t number : shards) {
        numbers += std::to_string(number) + '\n';
    }
    fs::create_directory(staging.engine());
    writeWhole(staging.engine() + "/numbers", numbers);

    ChildCommand command;
    if (shards.size() == 1) {
        command.words = {ownProgram(), "clip", ".", std::to_string(shards.front())};
    } else {
        command.words = parallelWords(jobs);
        command.input = "engine/numbers";
    }
    command.directory = staging.root();
    command.output = command.errors = "engine.log";
    command.variables = {{"VELDTRIM_TILES", ownProgram()}, {"PARALLEL_SHELL", "/bin/sh"}};
    command.ownGroup = true;
    try {
        return std::make_unique<ChildProcess>(command);
    } catch (const std::system_error& error) {
        if (shards.size() > 1 && error.code() == std::errc::no_such_file_or_directory) {
            throw std::system_error(error.code(), "GNU parallel is not installed (in Debian, the "
                                                  "package parallel)");
        }
        throw;
    }
}

/// Stops the engine and all its jobs, which remove what they have not published.
void stop(ChildProcess& engine) {
    engine.stop();
    // Before its first job, GNU parallel ignores the signal.
    if (!engine.waitFor(patience)) {
        engine.stop();
        engine.wait();
    }
    // It may have been about to start a job, of which it then knew nothing.
    endChildren(patience);
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

} // namespace

bool clipOnThisMachine(const Staging& staging, ShardWatch& shards, int jobs) {
    fs::remove_all(staging.failures());
    fs::create_directory(staging.failures());
    if (shards.pending().empty()) {
        return true;
    }
    adoptOrphans();
    noteStopSignals();
    const std::unique_ptr<ChildProcess> engine = startEngine(staging, shards.pending(), jobs);
    if (!watch(*engine, shards)) {
        throw std::runtime_error(interruptedText);
    }
    if (shards.pending().empty()) {
        return true;
    }
    if (shards.tellFailures(false) == 0) {
        throw std::runtime_error("shards were not clipped: see " + staging.engineLog());
    }
    reportState("Give the same command to go on; what is done is in " + staging.root());
    return false;
}

int processorCount() {
    return static_cast<int>(std::max(std::thread::hardware_concurrency(), 1U));
}

} // namespace veldtrim
