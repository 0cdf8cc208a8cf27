#include "area/area_writer.h"

#include "area/feature_refusal.h"
#include "area/hole_bridge.h"

#include <cmath>
#include <utility>

namespace veldtrim {

namespace {

/// Checks the ring and removes the vertex that closes it.
void openRing(const std::string& feature, MapRing& ring) {
    for (const BoundaryVertex& vertex : ring) {
        if (!std::isfinite(vertex.x) || !std::isfinite(vertex.y)) {
            throw FeatureRefusal(feature, "has a coordinate that is not a finite number");
        }
    }
    if (ring.size() > 1 && ring.front().x == ring.back().x && ring.front().y == ring.back().y) {
        ring.pop_back();
    }
    constexpr std::size_t fewestVertices = 3;
    if (ring.size() < fewestVertices) {
        throw FeatureRefusal(feature, "has a ring with fewer than three vertices");
    }
}

} // namespace

AreaWriter::AreaWriter(BoundaryWriter& writer, HoleRule holes)
    : writer_(writer), holes_(std::move(holes)) {}

void AreaWriter::addFeature(const std::string& name, std::int32_t id,
                            std::vector<MapPolygon> polygons) {
    if (polygons.empty()) {
        throw FeatureRefusal(name, "has an empty geometry");
    }
    for (MapPolygon& polygon : polygons) {
        if (polygon.rings.empty()) {
            throw FeatureRefusal(name, "has an empty geometry");
        }
        for (MapRing& ring : polygon.rings) {
            openRing(name, ring);
        }
        const MapRing ring =
            polygon.rings.size() == 1 ? std::move(polygon.rings.front()) : joinRings(name, polygon);
        writer_.addPolygon(id, ring);
        ++totals_.polygons;
        totals_.vertices += ring.size();
        for (const BoundaryVertex& vertex : ring) {
            totals_.bounds.add(vertex.x, vertex.y);
        }
    }
    ++totals_.features;
}

MapRing AreaWriter::joinRings(const std::string& name, const MapPolygon& polygon) {
    if (!holes_.bridge) {
        throw FeatureRefusal(name, "has a hole, but a boundary file has none, and without the hole "
                                   "points in it would be kept: " +
                                       holes_.option + " joins holes to their outer ring");
    }
    try {
        BridgedRing joined = bridgeHoles(polygon);
        totals_.holes += polygon.rings.size() - 1;
        totals_.slantedBridges += joined.slantedBridges;
        return std::move(joined.ring);
    } catch (const HoleFault& fault) {
        throw FeatureRefusal(name, fault.what());
    }
}

} // namespace veldtrim
