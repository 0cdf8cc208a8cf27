/// Finds out what a clipping run would do with one file.
#pragma once

#include "boundary/model/boundary_model.h"
#include "inspect/picture/density.h"
#include "inspect/polygon_finder.h"
#include "inspect/report.h"
#include "run/record_reader.h"

#include <pulsenote.h>

#include <cstdint>
#include <string>
#include <vector>

namespace veldtrim {

/// Reads files with the reader of the clipping pass and counts records instead of writing them.
class FileInspector {
public:
    /// `finder` and `polygons` must belong to `model`. `density` may be null if no picture is
    /// wanted. All of them must outlive the inspector.
    FileInspector(BoundaryModel& model, PolygonFinder& finder, std::vector<PolygonReport>& polygons,
                  Density* density)
        : model_(model), finder_(finder), polygons_(polygons), density_(density) {}

    /// Reports whether a run would take the file at `path`, and how many records it would count.
    /// Does not throw: the report contains any failure.
    static FileReport look(const std::string& path);

    /// Reads the records of a file that `look` reports as taken, and adds the findings to `report`,
    /// the polygons and the density. Calls `progress` for each record, as a run does. Does not
    /// throw: the report contains any failure.
    void read(const std::string& path, FileReport& report, ProgressMessage& progress);

private:
    void readRecords(const std::string& path, FileReport& report, ProgressMessage& progress);
    void inspectRecord(const Record& record, std::int64_t number, FileReport& report);
    void inspectPoint(const Record& record, FileReport& report);
    bool findPolygons(const ElevationPoint& point);

    BoundaryModel& model_;
    PolygonFinder& finder_;
    std::vector<PolygonReport>& polygons_;
    Density* density_;
    double firstX_ = 0.0;             ///< of the first record of the file
    std::int64_t countedRecords_ = 0; ///< first records whose x counts up by 1 from 0 or 1
};

} // namespace veldtrim
