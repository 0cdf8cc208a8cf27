#include "tiles/tile_bounds.h"

#include "elevation/header.h"
#include "elevation/record.h"
#include "geometry/elevation_point.h"
#include "run/input_files.h"
#include "run/skipped_file.h"
#include "text/line_reader.h"

#include <stdexcept>

namespace veldtrim {

void TileBounds::add(const TileBounds& part) {
    isInput = isInput && part.isInput;
    records += part.records;
    bounds.add(part.bounds);
}

TileBounds measureTile(const std::string& path) {
    TileBounds tile;
    if (const std::string reason = reasonToSkip(path); !reason.empty()) {
        if (reason.starts_with(cannotBeReadBecause)) {
            throw std::runtime_error(path + ": " + reason);
        }
        tile.isInput = false;
        return tile;
    }
    LineReader lines(path);
    Line line;
    lines.next(line);
    ElevationHeader header;
    std::string errorText;
    readHeader(line.text, header, errorText);
    while (lines.next(line) && line.raw.ends_with('\n')) {
        ++tile.records;
        ElevationPoint point;
        if (readRecord(line.text, header, point).fault == RecordFault::None) {
            tile.bounds.add(point.x, point.y);
        }
    }
    return tile;
}

} // namespace veldtrim
