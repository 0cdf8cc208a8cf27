#include "tiles/slurm_engine.h"

#include "platform/posix/stop_signals.h"
#include "run/outcome.h"
#include "status/report_state.h"
#include "tiles/merge.h"

#include <algorithm>
#include <chrono>
#include <map>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <boost/filesystem/operations.hpp>
#include <pulsenote.h>

namespace veldtrim {

namespace fs = boost::filesystem;

namespace {

using Clock = std::chrono::steady_clock;
using Tasks = std::vector<SlurmTask>;

bool isAtWork(const Tasks& tasks, SlurmStep step) {
    return std::any_of(tasks.begin(), tasks.end(), [step](const SlurmTask& task) {
        return task.step == step && !task.isOver();
    });
}

bool hasMerged(const Tasks& tasks) {
    return std::any_of(tasks.begin(), tasks.end(), [](const SlurmTask& task) {
        return task.step == SlurmStep::Merge && task.isOver() && !task.hasFailed();
    });
}

/// Other machines may see a file later than the one that wrote it.
constexpr std::chrono::seconds delayOfFiles{60};

/// When a job has ended, those that depend on it have another state soon.
constexpr std::chrono::seconds delayOfStates{5};

/// Returns the last line of a log, after a colon, or nothing if it is empty.
std::string lastWords(const std::string& log) {
    std::string text = readWhole(log);
    while (text.ends_with('\n')) {
        text.pop_back();
    }
    return text.empty() ? text : ": " + text.substr(text.rfind('\n') + 1);
}

/// The wait for the jobs of a run.
class SlurmWatch {
public:
    SlurmWatch(const Staging& staging, const Plan& plan, ShardWatch& shards,
               const SlurmOptions& options)
        : staging_(staging), plan_(plan), shards_(shards), jobs_(staging, options) {}

    /// Submits the jobs, unless an earlier command has.
    void submit();

    /// Waits for the end of the jobs. Returns whether their work is done.
    bool wait();

private:
    void submitAgain();
    void pause();
    Tasks nextTasks();
    [[nodiscard]] bool isComplete() const;
    void tellWaiting(const Tasks& tasks);
    void releaseHeld(const Tasks& tasks);
    void tellFailures(const Tasks& tasks);
    void tellFailure(const SlurmTask& task);

    const Staging& staging_;
    const Plan& plan_;
    ShardWatch& shards_;
    SlurmJobs jobs_;
    Clock::time_point begun_ = Clock::now();
    std::set<std::string> told_;          ///< why jobs wait, and logs of those that failed
    std::map<std::string, int> releases_; ///< by the number of the task
    int submissions_ = 0;
    bool hasFailed_ = false;
};

/// Waits before the next question. They are seldom when a run takes long: a controller has many
/// users.
void SlurmWatch::pause() {
    using std::chrono::milliseconds;
    constexpr milliseconds shortest{500};
    constexpr milliseconds longest{15'000};
    constexpr milliseconds step{50};
    constexpr int share = 20;
    const auto waited = std::chrono::duration_cast<milliseconds>(Clock::now() - begun_);
    const auto end = Clock::now() + std::clamp(waited / share, shortest, longest);
    while (Clock::now() < end) {
        if (stopRequested()) {
            jobs_.cancelAll();
            throw std::runtime_error(interruptedText);
        }
        std::this_thread::sleep_for(step);
    }
}

/// Returns the tasks as soon as Slurm answers.
Tasks SlurmWatch::nextTasks() {
    for (;;) {
        if (std::optional<Tasks> tasks = jobs_.tasks()) {
            return std::move(*tasks);
        }
        if (told_.insert("no answer").second) {
            reportState("Slurm does not answer; waiting until it does");
        }
        pause();
    }
}

void SlurmWatch::submit() {
    Tasks tasks = nextTasks();
    if (isAtWork(tasks, SlurmStep::Merge)) {
        reportState("Waiting for the jobs that an earlier command has submitted");
        return;
    }
    if (isAtWork(tasks, SlurmStep::Clip)) {
        reportState("Waiting for the end of shards that an earlier command has submitted");
    }
    while (isAtWork(tasks, SlurmStep::Clip)) {
        pause();
        shards_.update();
        tasks = nextTasks();
    }
    shards_.update();
    fs::remove_all(staging_.failures());
    fs::create_directory(staging_.failures());
    jobs_.forgetAll();
    ++submissions_;
    const std::vector<std::size_t> pending = shards_.pending();
    const std::vector<std::string> numbers =
        pending.empty() ? std::vector<std::string>() : jobs_.clip(pending);
    if (plan_.clips) {
        jobs_.merge(numbers);
    }
    for (const std::string& number : numbers) {
        reportState("Submitted to Slurm as job " + number);
    }
}

bool SlurmWatch::isComplete() const {
    const bool areShardsDone = shards_.pending().empty();
    return plan_.clips ? isPublished(staging_, plan_) || (areShardsDone && !shards_.hadInput())
                       : areShardsDone;
}

void SlurmWatch::tellWaiting(const Tasks& tasks) {
    for (const SlurmTask& task : tasks) {
        const bool isUsual = task.reason == "None" || task.reason == "Dependency" ||
                             task.reason == "JobArrayTaskLimit";
        if (task.isWaiting() && !isUsual && told_.insert(task.reason).second) {
            reportState("Slurm job " + task.job + " waits: " + task.reason);
        }
    }
}

/// A node can fail to start a task because a controller that has failed had started it before. When
/// that goes on, somebody has to look.
void SlurmWatch::releaseHeld(const Tasks& tasks) {
    constexpr int mostReleases = 3;
    for (const SlurmTask& task : tasks) {
        if (task.isHeldAfterStart() && ++releases_[SlurmJobs::nameOf(task)] <= mostReleases) {
            jobs_.release(task);
        }
    }
}

void SlurmWatch::tellFailure(const SlurmTask& task) {
    const std::string log = jobs_.logOf(task);
    if (told_.insert(log).second) {
        ErrorMessage(runErrorCode, "Slurm ended job " + SlurmJobs::nameOf(task) + " as " +
                                       task.state + lastWords(log) + "; its log is " + log);
    }
}

void SlurmWatch::tellFailures(const Tasks& tasks) {
    const bool hadFailed = hasFailed_;
    const bool hasReports = shards_.tellFailures(true) > 0;
    hasFailed_ |= hasReports;
    for (const SlurmTask& task : tasks) {
        // Of these, the first are told by their reports, and this command ends the others.
        const bool isTold =
            (task.state == "FAILED" && hasReports) || (task.state == "CANCELLED" && hadFailed);
        if (task.step == SlurmStep::Clip && task.hasFailed() && !isTold) {
            tellFailure(task);
            hasFailed_ = true;
        }
    }
    for (const SlurmTask& task : tasks) {
        // If a shard fails, Slurm removes the job.
        if (task.step == SlurmStep::Merge && task.hasFailed() && !hasFailed_) {
            tellFailure(task);
            hasFailed_ = true;
        }
    }
    if (hasFailed_ && !hadFailed) {
        jobs_.cancelWaiting();
    }
}

bool SlurmWatch::wait() {
    for (auto lastAtWork = Clock::now();;) {
        pause();
        const Tasks tasks = nextTasks();
        shards_.update();
        const bool merges = isAtWork(tasks, SlurmStep::Merge);
        if (!merges && isComplete()) {
            return true;
        }
        tellWaiting(tasks);
        releaseHeld(tasks);
        tellFailures(tasks);
        if (merges || isAtWork(tasks, SlurmStep::Clip)) {
            lastAtWork = Clock::now();
            continue;
        }
        if (hasFailed_) {
            reportState("Give the same command to go on; what is done is in " + staging_.root());
            return false;
        }
        if (Clock::now() > lastAtWork + (hasMerged(tasks) ? delayOfFiles : delayOfStates)) {
            submitAgain();
            lastAtWork = Clock::now();
        }
    }
}

/// Submits jobs that Slurm does not know any more: a controller that fails can lose what was
/// submitted in the last seconds.
void SlurmWatch::submitAgain() {
    constexpr int mostSubmissions = 3;
    if (submissions_ == mostSubmissions) {
        throw std::runtime_error("the jobs have ended, but not all is done: give the same command "
                                 "to go on");
    }
    reportState("Slurm has lost a job");
    submit();
}

} // namespace

bool runOnSlurm(const Staging& staging, const Plan& plan, ShardWatch& shards,
                const SlurmOptions& options) {
    // If the terminal is closed, this process ends, and the jobs go on.
    noteStopSignals(StopSignals::ExceptHangUp);
    SlurmWatch watch(staging, plan, shards, options);
    watch.submit();
    return watch.wait();
}

} // namespace veldtrim
