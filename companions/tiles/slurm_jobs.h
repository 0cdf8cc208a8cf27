/// The jobs of a run on Slurm: their submission, their states, their end.
#pragma once

#include "tiles/staging.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace veldtrim {

/// What the user wants of Slurm.
struct SlurmOptions {
    std::vector<std::string> words; ///< further options of sbatch
    int jobs = 0;                   ///< how many shards are clipped at once; 0 for any number
};

/// What a job does.
enum class SlurmStep : std::uint8_t { Clip, Merge };

/// A job, a task of a job array, or tasks that have not begun and therefore have the same state.
struct SlurmTask {
    SlurmStep step = SlurmStep::Clip;
    std::string job;    ///< its number
    std::string task;   ///< number or numbers in the array
    std::string state;  ///< as Slurm calls it, such as "RUNNING"
    std::string reason; ///< why it waits or failed; "None" if there is nothing to say

    [[nodiscard]] bool isOver() const;
    [[nodiscard]] bool isWaiting() const { return state == "PENDING"; }
    [[nodiscard]] bool hasFailed() const { return isOver() && state != "COMPLETED"; }

    /// Whether a node could not start it and Slurm holds it for that reason.
    [[nodiscard]] bool isHeldAfterStart() const { return reason == "launch failed requeued held"; }
};

/// The jobs of the run in a staging directory. Those that were submitted together have a random
/// name by which Slurm finds them, so that nothing is kept about them that could be lost.
class SlurmJobs {
public:
    /// Creates no job. Throws what the file system throws if the staging directory cannot be
    /// written.
    SlurmJobs(const Staging& staging, SlurmOptions options);

    /// Returns the jobs that were submitted last and that Slurm knows, those that ended in the last
    /// minutes included, or nothing if Slurm does not answer. Throws std::system_error if Slurm is
    /// not installed.
    [[nodiscard]] std::optional<std::vector<SlurmTask>> tasks() const;

    /// Gives the jobs that are submitted from now on a new name, so that the earlier ones are no
    /// longer those of the run. Throws std::system_error if it cannot be written.
    void forgetAll();

    /// Submits a job array that clips these shards, or several if Slurm takes no array of this
    /// size. Returns their numbers. Throws std::runtime_error with the words of Slurm if it refuses
    /// them; none is then left.
    [[nodiscard]] std::vector<std::string> clip(const std::vector<std::size_t>& shards) const;

    /// Submits a job that merges the shards once the jobs with these numbers have succeeded; if one
    /// of them fails, Slurm removes it. Throws as clip does.
    void merge(const std::vector<std::string>& after) const;

    /// Lets a task begin that Slurm holds.
    void release(const SlurmTask& task) const;

    /// Ends the jobs that have not begun, or all. Does not wait for their end.
    void cancelWaiting() const;
    void cancelAll() const;

    /// Returns the number of a job or, after an underscore, also that of its task.
    [[nodiscard]] static std::string nameOf(const SlurmTask& task);

    /// Returns the path of its log.
    [[nodiscard]] std::string logOf(const SlurmTask& task) const;

private:
    [[nodiscard]] std::string submit(SlurmStep step, const std::vector<std::string>& options,
                                     const std::vector<std::string>& words) const;
    void cancel(const std::vector<std::string>& options) const;

    std::string root_; ///< of the staging directory, as other machines find it
    std::string logs_; ///< directory of the logs, as the user finds it
    SlurmOptions options_;
    std::string name_; ///< of the jobs; empty if none were submitted
};

} // namespace veldtrim
