/// Writes features of a map to a boundary file.
#pragma once

#include "area/map_polygon.h"
#include "boundary/file/boundary_writer.h"
#include "geometry/bounding_box.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace veldtrim {

/// What happens to holes, which a boundary file cannot hold.
struct HoleRule {
    bool bridge = false; ///< join them to their outer ring; otherwise refuse them
    std::string option;  ///< the user's option that joins them, for the refusal
};

/// What was written.
struct AreaTotals {
    std::size_t features = 0;
    std::size_t polygons = 0;
    std::size_t vertices = 0;
    std::size_t holes = 0;          ///< holes joined to their outer ring
    std::size_t slantedBridges = 0; ///< bridges that are neither horizontal nor vertical
    BoundingBox bounds = BoundingBox::empty();
};

/// Applies the rules of a boundary file to the features of a map and writes their polygons.
///
/// Each ring may be closed, as on a map; it is written without the closing vertex.
class AreaWriter {
public:
    /// The writer must live as long as this object.
    AreaWriter(BoundaryWriter& writer, HoleRule holes);

    /// Writes the polygons of one feature, each with the id `id`. `name` names the feature in a
    /// refusal.
    ///
    /// Throws FeatureRefusal if there is no polygon, a polygon has no ring, a ring has fewer than
    /// three vertices, a coordinate is not finite, or a polygon has a hole that is not to be or
    /// cannot be joined to its outer ring. Some polygons of the feature may then have been written.
    void addFeature(const std::string& name, std::int32_t id, std::vector<MapPolygon> polygons);

    [[nodiscard]] const AreaTotals& totals() const { return totals_; }

private:
    MapRing joinRings(const std::string& name, const MapPolygon& polygon);

    BoundaryWriter& writer_;
    HoleRule holes_;
    AreaTotals totals_;
};

} // namespace veldtrim
