/// An axis-parallel box.
#pragma once

namespace veldtrim {

/// An axis-parallel box, in the units of the boundary file.
struct BoundingBox {
    double xMin = 0.0;
    double yMin = 0.0;
    double xMax = 0.0;
    double yMax = 0.0;
};

} // namespace veldtrim
