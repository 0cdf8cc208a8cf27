#include "boundary/boundary_model.h"

#include "boundary/point_location.h"

namespace veldtrim {

void BoundaryModel::clearVertices() {
    vertices_.clear();
}

void BoundaryModel::clearPolygons() {
    polygons_.clear();
}

void BoundaryModel::clear() {
    clearVertices();
    clearPolygons();
}

std::int32_t BoundaryModel::addVertex(BoundaryVertex vertex) {
    vertices_.push_back(vertex);
    return static_cast<std::int32_t>(vertices_.size()) - 1;
}

void BoundaryModel::addPolygon(const BoundaryPolygon& polygon) {
    polygons_.push_back(polygon);
}

bool BoundaryModel::isInBoundary(const ElevationPoint& point) {
    for (BoundaryPolygon& polygon : polygons_) {
        if (boundsContain(polygon, point) &&
            locatePoint(polygon, vertices_, point) != PointLocation::Outside) {
            return true;
        }
    }
    return false;
}

} // namespace veldtrim
