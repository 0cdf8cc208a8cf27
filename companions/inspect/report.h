/// What an inspection finds out.
#pragma once

#include "elevation/header.h"
#include "geometry/bounding_box.h"
#include "inspect/advice/header_advice.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace veldtrim {

/// What happens to the records of a file, or of all files.
struct RecordCounts {
    std::int64_t records = 0; ///< lines that a run reads after the header
    std::int64_t unparsed = 0;
    std::int64_t inside = 0;
    std::int64_t onBoundary = 0; ///< on the edge of a polygon and inside none
    std::int64_t outside = 0;

    [[nodiscard]] std::int64_t kept() const { return inside + onBoundary; }
    void add(const RecordCounts& other);
};

/// A line that is no record.
struct UnparsedLine {
    std::int64_t number = 0; ///< in the file, the header being line 1
    std::string reason;
};

struct FileReport {
    std::string name;
    std::int32_t recordCount = 0; ///< as the run counts, -1 for a file without a line feed
    bool taken = false;
    std::string reason; ///< why it is left out, or the failure that would end the run
    bool failed = false;
    ElevationHeader header;
    std::int64_t lineFeeds = 0;
    std::int64_t carriageReturnLineFeeds = 0;
    RecordCounts counts;
    std::vector<UnparsedLine> firstUnparsed;
    std::int64_t decimalCommas = 0; ///< records whose x or y seems to go on after a comma
    bool lastLineUnread = false;    ///< text after the last line feed
    FirstColumns firstColumns = FirstColumns::Usual;
    bool countsInFirstColumn = false; ///< x is 0, 1, 2, ... or 1, 2, 3, ...
    std::vector<std::string> advice;  ///< what is wrong, and what to do; none for a sound file
    BoundingBox bounds = BoundingBox::empty(); ///< of the points
};

struct PolygonReport {
    std::int32_t id = 0;
    std::size_t vertices = 0;
    BoundingBox bounds;
    double area = 0.0;
    std::int64_t held = 0;            ///< records; one that two polygons contain counts for both
    std::vector<std::string> remarks; ///< what is odd about the ring; none for a sound one
};

struct Report {
    std::string inputDirectory;
    std::string boundaryFile;
    /// What would end the run before it reads a record; empty if nothing would.
    std::string failure;
    /// Directories in the input directory that hold files with accepted endings: a run does not
    /// enter them.
    std::vector<std::string> subdirectories;
    std::vector<FileReport> files;
    std::vector<PolygonReport> polygons;
    RecordCounts total;
    BoundingBox pointBounds = BoundingBox::empty();
    BoundingBox modelBounds = BoundingBox::empty();
    std::vector<std::string> hints;

    /// Whether a run would finish and keep a record.
    [[nodiscard]] bool wouldKeep() const { return failure.empty() && total.kept() > 0; }
};

/// The files that take part.
std::size_t takenFiles(const Report& report);

/// Whether the file is left out, fails, has lines that are not read, or comes with advice.
bool hasProblem(const FileReport& file);

/// Whether reports describe the polygon by itself: if it comes with a remark, if there are few
/// polygons, or if `all` are wanted.
bool isListed(const PolygonReport& polygon, const Report& report, bool all);

/// The number of files by what a run does with them: "read", "read, with remarks", or the reason
/// why it does not read them.
std::map<std::string, std::size_t> countByOutcome(const Report& report);

} // namespace veldtrim
