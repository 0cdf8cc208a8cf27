#include "area/boundary_features.h"

#include "explain/boundary_fault.h"

namespace veldtrim {

bool BoundaryFeatures::readFile(const std::string& path) {
    path_ = path;
    return walkBoundaryFile(path, model_, *this);
}

bool BoundaryFeatures::readText(const std::string& text) {
    path_.clear();
    return walkBoundaryText(text, model_, *this);
}

MapShape BoundaryFeatures::shape(std::size_t position) const {
    switch (model_.polygons()[position].vertexIndices.size()) {
    case 0:
        return MapShape::Nothing;
    case 1:
        return MapShape::Point;
    case 2:
        return MapShape::Line;
    default:
        return MapShape::Polygon;
    }
}

MapRing BoundaryFeatures::positions(std::size_t position) const {
    constexpr std::size_t fewestInRing = 4;
    MapRing ring;
    for (const std::int32_t index : model_.polygons()[position].vertexIndices) {
        ring.push_back(model_.vertices()[static_cast<std::size_t>(index)]);
    }
    const bool isClosed =
        !ring.empty() && ring.front().x == ring.back().x && ring.front().y == ring.back().y;
    if (shape(position) == MapShape::Polygon && (!isClosed || ring.size() < fewestInRing)) {
        ring.push_back(ring.front());
    }
    return ring;
}

void BoundaryFeatures::onGroup(std::string_view /*type*/, bool /*isRead*/) {
    ++group_;
}

void BoundaryFeatures::onPolygon(std::int32_t id) {
    ids_.push_back(id);
    groups_.push_back(group_);
}

void BoundaryFeatures::onFault(const BoundaryFault& fault) {
    failure_ = path_.empty() ? describeFault(fault) : describeFault(fault, path_);
}

} // namespace veldtrim
