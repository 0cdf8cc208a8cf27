#include "tiles/slurm_jobs.h"

#include "platform/posix/child_process.h"
#include "platform/posix/own_program.h"
#include "platform/posix/stop_signals.h"
#include "platform/posix/unnamed_file.h"

#include <algorithm>
#include <array>
#include <sstream>
#include <stdexcept>
#include <string_view>
#include <system_error>
#include <utility>

#include <boost/filesystem/operations.hpp>

namespace veldtrim {

namespace fs = boost::filesystem;

namespace {

/// The jobs end with the program, which gets the signals of Slurm. Their words are arguments, so
/// that no name is taken for a part of the script. They open their logs themselves, since Slurm
/// would replace "%j" and the like in the path of the directory.
constexpr std::string_view clipScript = R"sh(#!/bin/sh
exec >>"$2/slurm/${SLURM_ARRAY_JOB_ID}_$SLURM_ARRAY_TASK_ID.log" 2>&1
exec "$1" clip "$2" "$(($3 + SLURM_ARRAY_TASK_ID))"
)sh";
constexpr std::string_view mergeScript = R"sh(#!/bin/sh
exec >>"$2/slurm/$SLURM_JOB_ID.log" 2>&1
exec "$1" merge "$2" --from-engine
)sh";

constexpr const char* nameFile = "/slurm/name";

/// Slurm's usual limit, if it does not tell its own.
constexpr std::size_t usualArrayLimit = 1001;

struct Answer {
    bool succeeded = false;
    std::string output;
    std::string errors;
};

/// Whether a command of Slurm only asks, or has to be carried out.
enum class Kind : std::uint8_t { Question, Order };

/// Runs a command of Slurm. A signal that asks to stop ends a question that is not answered. Throws
/// std::system_error if the command cannot be started.
Answer ask(std::vector<std::string> words, const std::string& directory, Kind kind = Kind::Order) {
    const UnnamedFile output = UnnamedFile::inMemory();
    const UnnamedFile errors = UnnamedFile::inMemory();
    ChildCommand command;
    command.words = std::move(words);
    command.directory = directory;
    command.output = output.path();
    command.errors = errors.path();
    command.ownGroup = true; // Ctrl-C must not reach it
    try {
        ChildProcess process(command);
        constexpr int patience = 200; // milliseconds until a signal that was just missed is noticed
        std::optional<ChildEnd> end;
        while (!(end = process.waitFor(patience))) {
            if (kind == Kind::Question && stopRequested()) {
                return {};
            }
        }
        return {end->succeeded(), readWhole(output.path()), readWhole(errors.path())};
    } catch (const std::system_error& error) {
        if (error.code() == std::errc::no_such_file_or_directory) {
            throw std::system_error(error.code(), "Slurm is not installed on this machine (" +
                                                      command.words.front() + ")");
        }
        throw;
    }
}

std::string withoutLineEnd(std::string text) {
    text.erase(std::find(text.begin(), text.end(), '\n'), text.end());
    return text;
}

/// The numbers in an array are below this.
std::size_t arrayLimit(const std::string& directory) {
    std::istringstream lines(ask({"scontrol", "show", "config"}, directory).output);
    std::string key;
    std::string equals;
    for (std::string line; std::getline(lines, line);) {
        std::istringstream words(line);
        std::size_t limit = 0;
        if (words >> key >> equals >> limit && key == "MaxArraySize" && limit > 1) {
            return limit;
        }
    }
    return usualArrayLimit;
}

/// Writes ascending numbers as Slurm reads them, such as "1-4,7".
std::string rangesText(const std::vector<std::size_t>& numbers) {
    std::string text;
    for (std::size_t i = 0; i < numbers.size();) {
        const std::size_t first = i;
        do {
            ++i;
        } while (i < numbers.size() && numbers[i] == numbers[i - 1] + 1);
        text += (text.empty() ? "" : ",") + std::to_string(numbers[first]);
        if (i - first > 1) {
            text += '-' + std::to_string(numbers[i - 1]);
        }
    }
    return text;
}

std::string jobName(const std::string& run, SlurmStep step) {
    return run + (step == SlurmStep::Clip ? "-clip" : "-merge");
}

} // namespace

bool SlurmTask::isOver() const {
    constexpr std::array<std::string_view, 10> ends{
        "BOOT_FAIL", "CANCELLED",     "COMPLETED", "DEADLINE", "FAILED",
        "NODE_FAIL", "OUT_OF_MEMORY", "PREEMPTED", "REVOKED",  "TIMEOUT"};
    return std::find(ends.begin(), ends.end(), state) != ends.end();
}

SlurmJobs::SlurmJobs(const Staging& staging, SlurmOptions options)
    : root_(fs::absolute(staging.root()).string()), logs_(staging.slurm()),
      options_(std::move(options)) {
    fs::create_directory(staging.slurm());
    name_ = withoutLineEnd(readWhole(root_ + nameFile));
}

void SlurmJobs::forgetAll() {
    name_ = randomName("veldtrim");
    writeWhole(root_ + nameFile, name_ + '\n');
}

std::optional<std::vector<SlurmTask>> SlurmJobs::tasks() const {
    if (name_.empty()) {
        return std::vector<SlurmTask>();
    }
    const std::string clips = jobName(name_, SlurmStep::Clip);
    const Answer answer =
        ask({"squeue", "--noheader", "--me", "--states=all",
             "--name=" + clips + ',' + jobName(name_, SlurmStep::Merge), "--format=%j|%F|%K|%T|%r"},
            root_, Kind::Question);
    if (!answer.succeeded) {
        return {};
    }
    std::vector<SlurmTask> tasks;
    std::istringstream lines(answer.output);
    for (std::string line; std::getline(lines, line);) {
        std::istringstream fields(line);
        std::string name;
        SlurmTask task;
        for (std::string* field : {&name, &task.job, &task.task, &task.state, &task.reason}) {
            std::getline(fields, *field, '|');
        }
        task.step = name == clips ? SlurmStep::Clip : SlurmStep::Merge;
        tasks.push_back(task);
    }
    return tasks;
}

std::vector<std::string> SlurmJobs::clip(const std::vector<std::size_t>& shards) const {
    const std::size_t size = arrayLimit(root_) - 1;
    std::vector<std::string> jobs;
    for (std::size_t i = 0; i < shards.size();) {
        // The tasks have the numbers of their shards, less those of the arrays before.
        const std::size_t before = (shards[i] - 1) / size * size;
        std::vector<std::size_t> numbers;
        for (; i < shards.size() && shards[i] <= before + size; ++i) {
            numbers.push_back(shards[i] - before);
        }
        std::string array = "--array=" + rangesText(numbers);
        if (options_.jobs > 0) {
            array += '%' + std::to_string(options_.jobs);
        }
        try {
            jobs.push_back(submit(SlurmStep::Clip, {array}, {std::to_string(before)}));
        } catch (...) {
            cancelAll();
            throw;
        }
    }
    return jobs;
}

void SlurmJobs::merge(const std::vector<std::string>& after) const {
    std::string dependency;
    for (const std::string& job : after) {
        dependency += (dependency.empty() ? "--dependency=afterok:" : ":") + job;
    }
    try {
        std::vector<std::string> options;
        if (!after.empty()) {
            options = {dependency, "--kill-on-invalid-dep=yes"};
        }
        static_cast<void>(submit(SlurmStep::Merge, options, {}));
    } catch (...) {
        cancelAll();
        throw;
    }
}

std::string SlurmJobs::submit(SlurmStep step, const std::vector<std::string>& options,
                              const std::vector<std::string>& words) const {
    const bool clips = step == SlurmStep::Clip;
    const std::string script = clips ? "slurm/clip.sh" : "slurm/merge.sh";
    writeWhole(root_ + '/' + script, clips ? clipScript : mergeScript);
    std::vector<std::string> command{"sbatch", "--parsable", "--requeue", "--ntasks=1",
                                     "--output=/dev/null"};
    const std::string name = "--job-name=" + jobName(name_, step);
    const std::string directory = "--chdir=" + root_;
    command.insert(command.end(), options_.words.begin(), options_.words.end());
    command.insert(command.end(), {name, directory});
    command.insert(command.end(), options.begin(), options.end());
    command.insert(command.end(), {script, ownProgram(), root_});
    command.insert(command.end(), words.begin(), words.end());
    const Answer answer = ask(std::move(command), root_);
    if (!answer.succeeded) {
        throw std::runtime_error("Slurm does not take the job: " + withoutLineEnd(answer.errors));
    }
    // The name of a cluster may follow the number.
    return answer.output.substr(0, answer.output.find_first_not_of("0123456789"));
}

void SlurmJobs::release(const SlurmTask& task) const {
    static_cast<void>(ask({"scontrol", "release", nameOf(task)}, root_));
}

void SlurmJobs::cancelWaiting() const {
    cancel({"--state=PENDING"});
}

void SlurmJobs::cancelAll() const {
    cancel({});
}

void SlurmJobs::cancel(const std::vector<std::string>& options) const {
    // The merge first, so that it is not removed for the reason that its jobs are.
    for (const SlurmStep step : {SlurmStep::Merge, SlurmStep::Clip}) {
        std::vector<std::string> words{"scancel", "--me", "--name=" + jobName(name_, step)};
        words.insert(words.end(), options.begin(), options.end());
        // If it is not carried out, Slurm does not answer, and the jobs are useless but harmless.
        static_cast<void>(ask(std::move(words), root_));
    }
}

std::string SlurmJobs::nameOf(const SlurmTask& task) {
    return task.step == SlurmStep::Clip ? task.job + '_' + task.task : task.job;
}

std::string SlurmJobs::logOf(const SlurmTask& task) const {
    return logs_ + '/' + nameOf(task) + ".log";
}

} // namespace veldtrim
