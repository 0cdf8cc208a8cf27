/// A straight piece of a polygon's boundary.
#pragma once

namespace veldtrim {

/// A vertex of the model boundaries, in the units of the boundary file.
struct BoundaryVertex {
    double x = 0.0;
    double y = 0.0;
};

/// The segment from `start` to `end`, with the values from which distances are computed.
struct BoundarySegment {
    BoundarySegment(const BoundaryVertex& from, const BoundaryVertex& to);

    /// Returns the Euclidean distance of the point (x, y) from the segment.
    [[nodiscard]] double distanceTo(double x, double y) const;

    BoundaryVertex start;
    BoundaryVertex end;
    BoundaryVertex delta; ///< from `start` to `end`
    double squaredLength;
    BoundaryVertex normal; ///< of unit length, or as long as a segment shorter than 1e-12
};

} // namespace veldtrim
