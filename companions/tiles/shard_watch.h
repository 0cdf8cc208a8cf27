/// Tells the user what the shards of a run say, and how far the run has come.
#pragma once

#include "tiles/plan.h"
#include "tiles/shard_report.h"
#include "tiles/staging.h"

#include <cstddef>
#include <cstdint>
#include <set>
#include <vector>

namespace veldtrim {

/// Watches the shards of a run. What a shard says is told once, when it is done, in the words of
/// one run and with the user's own paths.
class ShardWatch {
public:
    ShardWatch(const Staging& staging, const Plan& plan);

    /// Tells what the shards say that are done since the last call, and sends the progress: the
    /// share of the bytes of all shards that are done. Throws std::runtime_error if the results of
    /// a shard are damaged.
    void update();

    /// Returns the numbers of the shards that were not done at the last update.
    [[nodiscard]] std::vector<std::size_t> pending() const;

    /// Whether a shard that was done at the last update had an input file, or whether there is a
    /// tile that need not be read.
    [[nodiscard]] bool hadInput() const { return hadInput_; }

    /// Tells why shards failed that are not done, and where more about it is found, but no shard
    /// twice. `onlyFinal` leaves out those that another attempt may still finish. Returns how many
    /// failed so far.
    std::size_t tellFailures(bool onlyFinal);

private:
    void tell(std::size_t number);
    void tellFailure(std::size_t number, const ShardReport& report) const;

    const Staging& staging_;
    const Plan& plan_;
    std::vector<bool> isDone_; ///< by the number of the shard, less 1
    std::set<std::size_t> failed_;
    bool hadInput_;
    std::int64_t bytes_ = 0;
    std::int64_t bytesDone_ = 0;
};

} // namespace veldtrim
