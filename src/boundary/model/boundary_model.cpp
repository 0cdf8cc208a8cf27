#include "boundary/model/boundary_model.h"

namespace veldtrim {

void BoundaryModel::clearVertices() {
    vertices_.clear();
    index_.reset();
}

void BoundaryModel::clearPolygons() {
    polygons_.clear();
    index_.reset();
}

void BoundaryModel::clear() {
    clearVertices();
    clearPolygons();
}

std::int32_t BoundaryModel::addVertex(BoundaryVertex vertex) {
    vertices_.push_back(vertex);
    index_.reset();
    return static_cast<std::int32_t>(vertices_.size()) - 1;
}

void BoundaryModel::addPolygon(const BoundaryPolygon& polygon) {
    polygons_.push_back(polygon);
    index_.reset();
}

} // namespace veldtrim
