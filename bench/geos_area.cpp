#include "geos_area.h"

namespace veldtrim::bench {

namespace {

GEOSGeometry* makePolygon(GEOSContextHandle_t context, const Outline& outline) {
    const auto size = static_cast<unsigned>(outline.size());
    GEOSCoordSequence* const ring = GEOSCoordSeq_create_r(context, size + 1, 2);
    for (unsigned i = 0; i <= size; ++i) {
        GEOSCoordSeq_setXY_r(context, ring, i, outline[i % size].x, outline[i % size].y);
    }
    return GEOSGeom_createPolygon_r(context, GEOSGeom_createLinearRing_r(context, ring), nullptr,
                                    0);
}

} // namespace

GeosArea::GeosArea(const std::vector<Outline>& outlines) : context_(GEOS_init_r()) {
    std::vector<GEOSGeometry*> polygons;
    polygons.reserve(outlines.size());
    for (const Outline& outline : outlines) {
        polygons.push_back(makePolygon(context_, outline));
    }
    geometry_ = polygons.size() == 1
                    ? polygons.front()
                    : GEOSGeom_createCollection_r(context_, GEOS_MULTIPOLYGON, polygons.data(),
                                                  static_cast<unsigned>(polygons.size()));
    prepared_ = GEOSPrepare_r(context_, geometry_);
}

GeosArea::~GeosArea() {
    GEOSPreparedGeom_destroy_r(context_, prepared_);
    GEOSGeom_destroy_r(context_, geometry_);
    GEOS_finish_r(context_);
}

bool GeosArea::intersects(const ElevationPoint& point) {
    GEOSGeometry* const asked = GEOSGeom_createPointFromXY_r(context_, point.x, point.y);
    const char answer = GEOSPreparedIntersects_r(context_, prepared_, asked);
    GEOSGeom_destroy_r(context_, asked);
    return answer == 1;
}

} // namespace veldtrim::bench
