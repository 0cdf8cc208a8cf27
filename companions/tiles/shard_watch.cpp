#include "tiles/shard_watch.h"

#include "run/clip_file.h"
#include "run/outcome.h"
#include "status/report_error.h"
#include "status/report_state.h"
#include "tiles/merge.h"

#include <charconv>
#include <functional>
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

/// Visits the numbers with which the names in a directory begin. None if it does not exist.
void visitNumbers(const std::string& directory, const std::function<void(std::size_t)>& visit) {
    namespace fs = boost::filesystem;
    boost::system::error_code error;
    for (fs::directory_iterator at(directory, error), end; !error && at != end;
         at.increment(error)) {
        const std::string name = at->path().filename().string();
        std::size_t number = 0;
        std::from_chars(name.data(), name.data() + name.size(), number);
        visit(number);
    }
}

} // namespace

ShardWatch::ShardWatch(const Staging& staging, const Plan& plan)
    : staging_(staging), plan_(plan), isDone_(plan.shardCount(), false),
      hadInput_(plan.leftOut > 0),
      bytes_(std::accumulate(plan.shardBytes.begin(), plan.shardBytes.end(), std::int64_t{0})) {}

void ShardWatch::update() {
    visitNumbers(staging_.doneShards(), [&](std::size_t number) {
        if (number >= 1 && number <= isDone_.size() && !isDone_[number - 1]) {
            tell(number);
            isDone_[number - 1] = true;
            bytesDone_ += plan_.shardBytes[number - 1];
        }
    });
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
    hadInput_ |= report.hadInput;
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

std::size_t ShardWatch::tellFailures(bool onlyFinal) {
    std::set<std::size_t> numbers;
    visitNumbers(staging_.failures(), [&](std::size_t number) { numbers.insert(number); });
    for (const std::size_t number : numbers) {
        ShardReport report;
        if (number >= 1 && number <= isDone_.size() && !isDone_[number - 1] &&
            !failed_.contains(number) && readReport(readWhole(staging_.failure(number)), report) &&
            (report.isFinal || !onlyFinal)) {
            tellFailure(number, report);
            failed_.insert(number);
        }
    }
    return failed_.size();
}

void ShardWatch::tellFailure(std::size_t number, const ShardReport& report) const {
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

} // namespace veldtrim
