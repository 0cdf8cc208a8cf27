/// The point of one elevation record.
#pragma once

namespace veldtrim {

/// The first and the second field of a record, in the units of its file. No elevation: a record is
/// copied as text, so nothing else of it needs to be a number.
struct ElevationPoint {
    double x = 0.0;
    double y = 0.0;
};

} // namespace veldtrim
