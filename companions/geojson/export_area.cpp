#include "area/boundary_features.h"
#include "geojson/conversion.h"
#include "geojson/geojson_writer.h"
#include "geojson/messages.h"
#include "geojson/place.h"
#include "geometry/bounding_box.h"

#include <stdexcept>

namespace veldtrim {

namespace {

void readBoundary(const std::string& source, BoundaryFeatures& features) {
    const bool isRead =
        isStandardStream(source) ? features.readText(readWhole(source)) : features.readFile(source);
    if (!isRead) {
        throw std::runtime_error(nameOfSource(source) + ' ' + features.failure());
    }
    if (features.size() == 0) {
        throw std::runtime_error(nameOfSource(source) +
                                 " holds no polygon in a group of type \"boundaries\"");
    }
}

/// Tells which polygons are no areas.
void tellOfShapes(const BoundaryFeatures& features) {
    std::size_t left = 0;
    std::size_t firstLeft = 0;
    std::size_t points = 0;
    std::size_t lines = 0;
    for (std::size_t i = 0; i < features.size(); ++i) {
        switch (features.shape(i)) {
        case MapShape::Nothing:
            firstLeft = left++ == 0 ? i : firstLeft;
            break;
        case MapShape::Point:
            ++points;
            break;
        case MapShape::Line:
            ++lines;
            break;
        case MapShape::Polygon:
            break;
        }
    }
    if (left > 0) {
        tell("left out " + count(left, "polygon") + " without points, first polygon number " +
             std::to_string(firstLeft + 1) + " (id " + std::to_string(features.id(firstLeft)) +
             ')');
    }
    if (points > 0) {
        tell("wrote " + count(points, "polygon") + " of one point as Point");
    }
    if (lines > 0) {
        tell("wrote " + count(lines, "polygon") + " of two points as LineString");
    }
}

} // namespace

void exportArea(const Conversion& conversion) {
    Destination target(conversion.target);
    BoundaryFeatures features;
    readBoundary(conversion.source, features);

    GeoJsonWriter writer([&target](std::string_view text) { target.write(text); }, conversion.crs);
    BoundingBox bounds = BoundingBox::empty();
    for (std::size_t i = 0; i < features.size(); ++i) {
        if (features.shape(i) != MapShape::Nothing) {
            writer.addFeature(features.id(i), features.group(i), features.shape(i),
                              features.positions(i));
        }
    }
    for (const BoundaryVertex& vertex : features.model().vertices()) {
        bounds.add(vertex.x, vertex.y);
    }
    writer.finish();
    target.publish();

    tell("read " + nameOfSource(conversion.source) + ": " + count(features.size(), "polygon") +
         ", " + extent(features.model().vertices().size(), bounds));
    tellOfShapes(features);
    tell("wrote " + nameOfTarget(conversion.target) + ": " + count(writer.features(), "feature") +
         ", coordinate system " +
         (conversion.crs.empty() ? "not named; --crs EPSG:CODE names it" : conversion.crs));
}

} // namespace veldtrim
