#include "tiles/clip_shard.h"

#include "platform/posix/stop_signals.h"
#include "tiles/attempt.h"

#include <chrono>
#include <exception>
#include <iostream>
#include <string>
#include <thread>

namespace veldtrim {

namespace {

constexpr int mostAttempts = 3;
constexpr std::chrono::milliseconds firstPause{200};

ShardReport failureReport(const std::string& why) {
    ShardReport report;
    report.failure = why;
    report.messages.push_back({"error", 0, why});
    return report;
}

/// Runs one attempt. Returns whether the shard is done; if not, `failed` says why.
bool tryOnce(const Staging& staging, const Plan& plan, std::size_t number, const Shard& shard,
             bool isLast, ShardReport& failed) {
    try {
        Attempt attempt(staging, plan, number, shard);
        try {
            const ShardReport report = attempt.run();
            if (report.failure.empty()) {
                attempt.publish(report);
                return true;
            }
            failed = report;
        } catch (const std::exception& error) {
            failed = failureReport(error.what());
        }
        // Another attempt was faster, and the merge may already have removed everything.
        if (isDone(staging, number) || !hasPlan(staging)) {
            return true;
        }
        failed.isFinal = isLast;
        if (!stopRequested()) {
            attempt.leaveFailure(failed);
        }
    } catch (const std::exception& error) {
        // Not even that: there may be no room for it. The user reads it where the engine keeps it.
        std::cerr << "shard " << number << ": " << error.what() << std::endl;
        if (failed.failure.empty()) {
            failed = failureReport(error.what());
        }
    }
    return isDone(staging, number);
}

} // namespace

int clipShard(const Staging& staging, std::size_t number) {
    const Plan plan = loadPlan(staging);
    const Shard shard = loadShard(staging, number);
    ShardReport failed;
    auto pause = firstPause;
    for (int attempts = 1; !isDone(staging, number); ++attempts) {
        const bool isLast = attempts == mostAttempts;
        if (tryOnce(staging, plan, number, shard, isLast, failed)) {
            return 0;
        }
        if (stopRequested() || isLast) {
            std::cerr << "shard " << number << ": " << withUsersPaths(failed.failure, plan, shard)
                      << std::endl;
            return 1;
        }
        std::this_thread::sleep_for(pause);
        pause *= 4;
    }
    return 0;
}

} // namespace veldtrim
