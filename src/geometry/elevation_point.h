/// The point of one elevation record.
#pragma once

namespace veldtrim {

/// The x and y of a record, in the units of its file, which must be those of the boundary file. The
/// elevation is not read, because records are copied as text.
struct ElevationPoint {
    double x = 0.0;
    double y = 0.0;
};

} // namespace veldtrim
