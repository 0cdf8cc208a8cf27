/// One shape, ready to be asked for points in every way that is compared.
#pragma once

#include "boundary/model/boundary_model.h"
#include "geometry/elevation_point.h"
#include "geos_area.h"

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace veldtrim::bench {

/// A shape of makeShape, and what asks it. Each asker is made when it is first needed.
class PointSubject {
public:
    /// The subject for the shape of this name; one for the whole process.
    static PointSubject& named(const std::string& shape);

    explicit PointSubject(const std::string& shape);

    /// A copy of the model, whose derived data is built already.
    BoundaryModel& warmModel();

    /// The plain walk over all polygons.
    bool walk(const ElevationPoint& point);

    GeosArea& geosArea();

    /// Number of vertices.
    [[nodiscard]] std::size_t size() const { return vertices_.size(); }
    [[nodiscard]] std::vector<BoundaryPolygon>& polygons() { return polygons_; }
    [[nodiscard]] const std::vector<BoundaryVertex>& vertices() const { return vertices_; }

private:
    std::vector<BoundaryPolygon> polygons_;
    std::vector<BoundaryVertex> vertices_;
    std::unique_ptr<BoundaryModel> warmModel_;
    std::unique_ptr<GeosArea> geosArea_;
    std::string shape_;
};

/// Points to take turns with: enough that no branch predictor learns them by heart.
inline constexpr std::size_t randomPointCount = std::size_t{1} << 20U;

/// So many points, evenly spread over the area.
const std::vector<ElevationPoint>& randomPoints();

} // namespace veldtrim::bench
