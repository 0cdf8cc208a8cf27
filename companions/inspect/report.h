/// The results of an inspection.
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
    std::int64_t onBoundary = 0; ///< on the edge of a polygon, but inside none
    std::int64_t outside = 0;

    [[nodiscard]] std::int64_t kept() const { return inside + onBoundary; }
    void add(const RecordCounts& other);
};

/// A line that is not a record.
struct UnparsedLine {
    std::int64_t number = 0; ///< in the file; the header is line 1
    std::string reason;
};

struct FileReport {
    std::string name;
    std::int32_t recordCount = 0; ///< as counted by a run; -1 for a file without a line feed
    bool taken = false;
    std::string reason; ///< why it is skipped, or the failure that would end the run
    bool failed = false;
    ElevationHeader header;
    std::int64_t lineFeeds = 0;
    std::int64_t carriageReturnLineFeeds = 0;
    RecordCounts counts;
    std::vector<UnparsedLine> firstUnparsed;
    std::string decimalComma;    ///< the first x or y that seems to continue after a comma
    bool lastLineUnread = false; ///< there is text after the last line feed
    FirstColumns firstColumns = FirstColumns::Usual;
    bool countsInFirstColumn = false; ///< x is 0, 1, 2, ... or 1, 2, 3, ...
    std::vector<std::string> advice;  ///< what is wrong and what to do; empty for a sound file
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
    /// Why a run would fail; empty if it would finish.
    std::string failure;
    /// Subdirectories of the input directory that contain files with accepted endings. A run does
    /// not read them.
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

/// Returns the number of files that a run would take.
std::size_t takenFiles(const Report& report);

/// Whether the first column of some file is probably not x, or its numbers are cut off at commas:
/// its points are then not where they belong.
bool hasWrongPoints(const Report& report);

/// Whether the file is left out, fails, has lines that are not read, or comes with advice.
bool hasProblem(const FileReport& file);

/// Whether reports describe the polygon individually: if there are remarks on it, if there are few
/// polygons, or if `all` is true.
bool isListed(const PolygonReport& polygon, const Report& report, bool all);

/// Returns the number of files by outcome: "read", "read, with remarks", or the reason why a run
/// would not read them.
std::map<std::string, std::size_t> countByOutcome(const Report& report);

} // namespace veldtrim
