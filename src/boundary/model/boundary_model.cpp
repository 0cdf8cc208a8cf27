#include "boundary/model/boundary_model.h"

#include <cassert>
#include <new>

namespace veldtrim {

void BoundaryModel::clearVertices() {
    vertices_.clear();
    dropIndex();
}

void BoundaryModel::clearPolygons() {
    polygons_.clear();
    dropIndex();
}

void BoundaryModel::clear() {
    clearVertices();
    clearPolygons();
}

std::int32_t BoundaryModel::addVertex(BoundaryVertex vertex) {
    vertices_.push_back(vertex);
    dropIndex();
    return static_cast<std::int32_t>(vertices_.size()) - 1;
}

void BoundaryModel::addPolygon(const BoundaryPolygon& polygon) {
    polygons_.push_back(polygon);
    dropIndex();
}

template <typename Count>
PointLocation BoundaryModel::walkPolygons(const ElevationPoint& point, Count count) {
    for (BoundaryPolygon& polygon : polygons_) {
        count(1);
        if (boundsContain(polygon, point)) {
            count(polygon.vertexIndices.size());
            const PointLocation found = locatePoint(polygon, vertices_, point);
            if (found != PointLocation::Outside) {
                return found;
            }
        }
    }
    return PointLocation::Outside;
}

PointLocation BoundaryModel::locate(const ElevationPoint& point) {
    if (index_) {
        return index_->locate(polygons_, vertices_, point);
    }
    if (!isLarge_) {
        return walkPolygons(point, [](std::size_t) {});
    }
    const PointLocation found =
        walkPolygons(point, [this](std::size_t steps) { stepsWalked_ += steps; });
    if (stepsWalked_ > PointIndex::worthBuildingAfter * (polygons_.size() + vertices_.size())) {
        buildIndex();
    }
    return found;
}

void BoundaryModel::locateEach(std::span<const ElevationPoint> points,
                               std::span<PointLocation> locations) {
    assert(points.size() == locations.size());
    if (index_) {
        index_->locateEach(polygons_, vertices_, points, locations);
        return;
    }
    for (std::size_t i = 0; i < points.size(); ++i) {
        locations[i] = locate(points[i]);
    }
}

void BoundaryModel::buildIndex() {
    try {
        index_ = std::make_shared<const PointIndex>(polygons_, vertices_);
    } catch (const std::bad_alloc&) {
        isLarge_ = false; // slow is better than not at all
    }
}

void BoundaryModel::dropIndex() {
    index_.reset();
    stepsWalked_ = 0;
    isLarge_ = polygons_.size() + vertices_.size() > PointIndex::fewVertices;
}

} // namespace veldtrim
