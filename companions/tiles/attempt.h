/// One attempt to clip a shard.
#pragma once

#include "platform/posix/unnamed_file.h"
#include "tiles/plan.h"
#include "tiles/shard_report.h"
#include "tiles/staging.h"

#include <cstddef>
#include <map>
#include <string>

namespace veldtrim {

/// Where the report of a shard that is done lies in its directory.
inline constexpr const char* reportFile = "report.json";

/// A directory of its own, in which Veldtrim clips the pieces of a shard. No other attempt uses it,
/// so that any number of them, at the same shard too, can go on at once. Destroying the object
/// removes what was not published.
class Attempt {
public:
    /// Creates the directory. Throws what the file system throws if it cannot be created.
    Attempt(const Staging& staging, const Plan& plan, std::size_t number, const Shard& shard);
    Attempt(const Attempt&) = delete;
    Attempt& operator=(const Attempt&) = delete;
    ~Attempt();

    /// Links the tiles, copies the parts of tiles to the temporary directory of this machine, finds
    /// the bounds that the tile index needs, runs Veldtrim unless only these are wanted, and judges
    /// what it said and left. Returns the report, which says why if the attempt failed. Throws
    /// std::system_error or what the file system throws if the system fails.
    ShardReport run();

    /// Publishes the output files and the report with one rename. Returns false if another attempt
    /// at the shard was published before; the results of this one are then dropped. Throws
    /// std::system_error if neither is possible.
    bool publish(const ShardReport& report);

    /// Leaves the report and all that Veldtrim said to the user, in place of those of an earlier
    /// attempt that failed. Throws std::system_error if the report cannot be written.
    void leaveFailure(const ShardReport& report);

private:
    void presentPieces(ShardReport& report);
    void measurePieces(ShardReport& report);
    void copyPart(std::size_t index, ShardReport& report);

    /// Returns where to read a piece.
    [[nodiscard]] std::string pathOf(std::size_t piece) const;

    /// Runs Veldtrim. Returns its exit code, or sets the failure if it was ended or is to end.
    int runProgram(ShardReport& report);

    void readResults(ShardReport& report);

    [[nodiscard]] std::string in(const std::string& name) const { return directory_ + '/' + name; }

    const Staging& staging_;
    const Plan& plan_;
    std::size_t number_;
    const Shard& shard_;
    std::string directory_;
    UnnamedFile messages_ = UnnamedFile::inMemory(); ///< of Veldtrim; a full disk would lose them
    std::map<std::size_t, UnnamedFile> copies_;      ///< of the pieces that are parts of tiles
};

} // namespace veldtrim
