#include "tiles/shard_watch.h"

#include "run/clip_file.h"
#include "run/outcome.h"
#include "status/report_error.h"
#include "status/report_state.h"
#include "tiles/merge.h"
#include "tiles/shard_report.h"

#include <charconv>
#include <numeric>
#include <string>

#include <boost/filesystem/directory.hpp>
#include <boost/filesystem/path.hpp>
#include <pulsenote.h>

namespace veldtrim {

namespace {

void send(const RunMessage& message, const std::string& text) {
    constexpr int failedCheckCode = 2;
    if (message.kind != "error") {
        StateMessage(message.code, text, true);
    } else if (message.code == failedCheckCode) {
        reportError(text);
    } else {
        ErrorMessage(message.code, text);
    }
}

} // namespace

ShardWatch::ShardWatch(const Staging& staging, const Plan& plan)
    : staging_(staging), plan_(plan), isDone_(plan.shardCount(), false),
      bytes_(std::accumulate(plan.shardBytes.begin(), plan.shardBytes.end(), std::int64_t{0})) {}

void ShardWatch::update() {
    namespace fs = boost::filesystem;
    for (const fs::directory_entry& entry : fs::directory_iterator(staging_.doneShards())) {
        const std::string name = entry.path().filename().string();
        std::size_t number = 0;
        std::from_chars(name.data(), name.data() + name.size(), number);
        if (number >= 1 && number <= isDone_.size() && !isDone_[number - 1]) {
            tell(number);
            isDone_[number - 1] = true;
            bytesDone_ += plan_.shardBytes[number - 1];
        }
    }
    const double position =
        bytes_ == 0 ? 0.0 : 100.0 * static_cast<double>(bytesDone_) / static_cast<double>(bytes_);
    // Without steps, it is no stretch of records, of which the progress line would tell the speed.
    ProgressMessage(position, position, 0).OnProgress(0, false);
}

std::vector<std::size_t> ShardWatch::pending() const {
    std::vector<std::size_t> numbers;
    for (std::size_t i = 0; i < isDone_.size(); ++i) {
        if (!isDone_[i]) {
            numbers.push_back(i + 1);
        }
    }
    return numbers;
}

void ShardWatch::tell(std::size_t number) {
    const ShardReport report = loadDone(staging_, number);
    if (!report.messages.empty()) {
        const Shard shard = loadShard(staging_, number);
        for (const RunMessage& message : report.messages) {
            send(message, withUsersPaths(message.text, plan_, shard));
        }
    }
    for (std::int64_t i = 0; i < report.clipped; ++i) {
        reportState(clippingText);
    }
}

std::size_t ShardWatch::tellFailures() const {
    std::size_t failures = 0;
    for (const std::size_t number : pending()) {
        ShardReport report;
        if (!readReport(readWhole(staging_.failure(number)), report)) {
            continue;
        }
        ++failures;
        const Shard shard = loadShard(staging_, number);
        bool hasError = false;
        for (const RunMessage& message : report.messages) {
            hasError |= message.kind == "error";
            send(message, withUsersPaths(message.text, plan_, shard));
        }
        if (!hasError) {
            ErrorMessage(runErrorCode, withUsersPaths(report.failure, plan_, shard));
        }
        reportState("Shard " + std::to_string(number) + " failed; its log is " +
                    staging_.failureLog(number));
    }
    return failures;
}

} // namespace veldtrim
