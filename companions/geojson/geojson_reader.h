/// Reads the features of a GeoJSON text.
#pragma once

#include "area/map_polygon.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace veldtrim {

/// A number, text or word of JSON that may be an id.
struct JsonScalar {
    std::string text;               ///< as a refusal shows it; empty for null or a missing member
    std::optional<std::int32_t> id; ///< the value if it is a 32-bit integer, also one in a text
    bool isNumber = false;
};

/// A feature, or a geometry that stands alone.
struct MapFeature {
    std::size_t number = 0;           ///< its place in the text, from 1
    std::string geometryType;         ///< as in the text; empty without a geometry
    std::vector<MapPolygon> polygons; ///< those of a Polygon or MultiPolygon, with closed rings
    bool isEmpty = false;             ///< the geometry has no coordinates, or an empty part
    bool isRegular = true;            ///< the coordinates have the form that the type demands
    JsonScalar memberId;              ///< the member "id" of the feature
    JsonScalar propertyId;            ///< the property that holds the ids
};

/// Receives what a GeoJSON text holds, in the order of the text.
class FeatureSink {
public:
    FeatureSink() = default;
    FeatureSink(const FeatureSink&) = delete;
    FeatureSink& operator=(const FeatureSink&) = delete;
    virtual ~FeatureSink() = default;

    virtual void onFeature(MapFeature feature) = 0;

    /// The name in the member "crs". It may come after the features.
    virtual void onCrs(const std::string& name) = 0;
};

/// Thrown for a text that is not GeoJSON. `what` is a predicate, such as "is broken JSON at line 3,
/// column 7: ...".
class GeoJsonFault : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Reads a FeatureCollection, a Feature or a geometry as in RFC 7946, with the member "crs" of its
/// predecessor, and sends each feature to `sink` as soon as it has been read. Ids are taken from
/// the property `idProperty`. Third coordinates are dropped; a GeometryCollection has no polygons.
/// Of members with the same name, the last one counts; only "features" must not come twice.
///
/// Throws GeoJsonFault if the text is not JSON or not GeoJSON, and passes on what `sink` throws.
/// Features that come before the fault have then been sent. Memory grows with the largest feature.
void readGeoJson(std::string_view text, const std::string& idProperty, FeatureSink& sink);

} // namespace veldtrim
