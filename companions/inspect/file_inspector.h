/// Finds out what a clipping run would do with one file.
#pragma once

#include "boundary/model/boundary_model.h"
#include "inspect/picture/density.h"
#include "inspect/polygon_finder.h"
#include "inspect/report.h"
#include "run/record_reader.h"

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

    /// Returns the report on the file at `path`, and adds its points to the polygons and the
    /// density. Does not throw: the report contains any failure.
    FileReport inspect(const std::string& path);

private:
    void readFile(const std::string& path, FileReport& report);
    void inspectRecord(const Record& record, std::int64_t number, FileReport& report);
    void inspectPoint(const Record& record, FileReport& report);
    bool findPolygons(const ElevationPoint& point);

    BoundaryModel& model_;
    PolygonFinder& finder_;
    std::vector<PolygonReport>& polygons_;
    Density* density_;
};

} // namespace veldtrim
