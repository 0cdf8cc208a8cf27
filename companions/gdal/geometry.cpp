#include "gdal/geometry.h"

#include "area/feature_refusal.h"

#include <utility>

namespace veldtrim {

namespace {

template <typename Line>
std::unique_ptr<Line> lineOf(const MapRing& positions) {
    auto line = std::make_unique<Line>();
    std::vector<OGRRawPoint> points;
    points.reserve(positions.size());
    for (const BoundaryVertex& position : positions) {
        points.emplace_back(position.x, position.y);
    }
    line->setPoints(static_cast<int>(points.size()), points.data());
    return line;
}

MapPolygon mapPolygon(const OGRPolygon& polygon) {
    MapPolygon rings;
    for (const OGRLinearRing* const ring : polygon) {
        MapRing& positions = rings.rings.emplace_back();
        positions.reserve(static_cast<std::size_t>(ring->getNumPoints()));
        for (int i = 0; i < ring->getNumPoints(); ++i) {
            positions.push_back({ring->getX(i), ring->getY(i)});
        }
    }
    return rings;
}

} // namespace

std::unique_ptr<OGRGeometry> geometryOf(MapShape shape, const MapRing& positions) {
    switch (shape) {
    case MapShape::Nothing:
        return nullptr;
    case MapShape::Point:
        return std::make_unique<OGRPoint>(positions.front().x, positions.front().y);
    case MapShape::Line:
        return lineOf<OGRLineString>(positions);
    case MapShape::Polygon:
        break;
    }
    auto polygon = std::make_unique<OGRPolygon>();
    polygon->addRingDirectly(lineOf<OGRLinearRing>(positions).release());
    return polygon;
}

std::vector<MapPolygon> polygonsOf(const std::string& feature, const OGRGeometry* geometry) {
    std::vector<MapPolygon> polygons;
    if (geometry == nullptr || geometry->IsEmpty() != 0) {
        return polygons;
    }
    switch (const OGRwkbGeometryType type = wkbFlatten(geometry->getGeometryType())) {
    case wkbPolygon:
    case wkbTriangle:
        polygons.push_back(mapPolygon(*geometry->toPolygon()));
        return polygons;
    case wkbMultiPolygon:
        for (const OGRPolygon* const polygon : *geometry->toMultiPolygon()) {
            polygons.push_back(mapPolygon(*polygon));
        }
        return polygons;
    default:
        refuseGeometry(feature, OGRGeometryTypeToName(type));
    }
}

} // namespace veldtrim
