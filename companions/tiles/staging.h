/// The staging directory, in which a run in shards keeps all that it has until it is complete.
#pragma once

#include "platform/posix/file_lock.h"
#include "tiles/plan.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace veldtrim {

/// The error of a command that a signal stopped.
inline constexpr const char* interruptedText = "interrupted: give the same command to go on";

/// The places in a staging directory. Shards are numbered from 1.
class Staging {
public:
    explicit Staging(std::string root) : root_(std::move(root)) {}

    [[nodiscard]] const std::string& root() const { return root_; }

    /// Locked by the command that plans the run and waits for its end.
    [[nodiscard]] std::string lock() const { return in("lock"); }

    /// Locked by whoever merges: that command, or a job.
    [[nodiscard]] std::string mergeLock() const { return in("merging"); }

    /// The plan: complete, or not there.
    [[nodiscard]] std::string plan() const { return in("plan"); }
    [[nodiscard]] std::string planFile() const { return in("plan/plan.json"); }
    [[nodiscard]] std::string shardFile(std::size_t shard) const { return in("plan/", shard); }

    /// The numbers of the shards, one per line, for an engine.
    [[nodiscard]] std::string numbersFile() const { return in("plan/numbers"); }

    /// Holds a directory for each attempt to clip a shard.
    [[nodiscard]] std::string attempts() const { return in("attempts"); }

    /// A shard that is done, with its output files: complete, or not there.
    [[nodiscard]] std::string doneShards() const { return in("done"); }
    [[nodiscard]] std::string done(std::size_t shard) const { return in("done/", shard); }

    /// Why the last attempt at a shard failed, and all that it said.
    [[nodiscard]] std::string failures() const { return in("failed"); }
    [[nodiscard]] std::string failure(std::size_t shard) const {
        return in("failed/", shard) + ".json";
    }
    [[nodiscard]] std::string failureLog(std::size_t shard) const {
        return in("failed/", shard) + ".log";
    }

    /// What the engine says, and what it keeps.
    [[nodiscard]] std::string engineLog() const { return in("engine.log"); }
    [[nodiscard]] std::string engine() const { return in("engine"); }

    /// What Slurm needs of a run: the name of its jobs, their scripts and logs.
    [[nodiscard]] std::string slurm() const { return in("slurm"); }

    /// The directory that becomes the output directory, the parts that are being joined, and a file
    /// that says which directory that is.
    [[nodiscard]] std::string merged() const { return in("merged"); }
    [[nodiscard]] std::string joining() const { return in("joining"); }
    [[nodiscard]] std::string publishing() const { return in("publishing"); }

private:
    [[nodiscard]] std::string in(std::string_view name) const {
        return root_ + '/' + std::string(name);
    }
    [[nodiscard]] std::string in(std::string_view folder, std::size_t shard) const {
        return in(folder) + std::to_string(shard);
    }

    std::string root_;
};

/// Returns the staging directory for an output directory: beside it, and thereby on its file
/// system.
Staging stagingFor(const std::string& outputDirectory);

/// Returns the output directory for a staging directory.
std::string outputDirectoryFor(const Staging& staging);

/// Creates the staging directory if it does not exist, and locks it. Throws std::runtime_error if
/// another command has it, or if it is a directory of somebody else's, and what the file system
/// throws if it cannot be created.
std::unique_ptr<FileLock> takeStaging(const Staging& staging);

/// Removes the output files of the shards, and what was joined of them.
void removeResults(const Staging& staging);

/// Removes the staging directory. Whatever interrupts this, the file that says which directory was
/// published is removed last.
void removeStaging(const Staging& staging);

/// Publishes the plan with one rename.
void publishPlan(const Staging& staging, const Plan& plan, const std::vector<Shard>& shards);

/// Whether there is a plan, and whether it is this one.
bool hasPlan(const Staging& staging);
bool hasPlan(const Staging& staging, const Plan& plan, const std::vector<Shard>& shards);

/// Returns the plan and its shards. Throws std::runtime_error if there is none.
Plan loadPlan(const Staging& staging);
Shard loadShard(const Staging& staging, std::size_t shard);

/// Whether an attempt at the shard has been published.
bool isDone(const Staging& staging, std::size_t shard);

/// Returns the content of a small file, empty if it cannot be read.
std::string readWhole(const std::string& path);

/// Creates or replaces a file. Throws std::system_error, which names it, if it cannot be written.
void writeWhole(const std::string& path, std::string_view content);

} // namespace veldtrim
