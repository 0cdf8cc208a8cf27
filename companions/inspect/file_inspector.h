/// What a clipping run would do with one file.
#pragma once

#include "inspect/density.h"
#include "inspect/polygon_finder.h"
#include "inspect/report.h"

#include <string>
#include <vector>

namespace veldtrim {

/// Reads a file as the clipping pass does, and keeps account instead of records.
class FileInspector {
public:
    /// `density` may be null: there is no picture then.
    FileInspector(PolygonFinder& finder, std::vector<PolygonReport>& polygons, Density* density)
        : finder_(finder), polygons_(polygons), density_(density) {}

    /// A failure of the system is told in the report, not thrown.
    FileReport inspect(const std::string& path);

private:
    void readFile(const std::string& path, FileReport& report);
    void inspectRecord(std::string_view line, std::int64_t number, FileReport& report);
    void inspectPoint(const ElevationPoint& point, FileReport& report);

    PolygonFinder& finder_;
    std::vector<PolygonReport>& polygons_;
    Density* density_;
};

} // namespace veldtrim
