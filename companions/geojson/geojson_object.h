/// A GeoJSON object while it is read.
#pragma once

#include "geojson/coordinate_arrays.h"
#include "geojson/geojson_reader.h"

#include <string>
#include <string_view>

namespace veldtrim {

/// What has been read of the outermost object, a feature or the value of "geometry".
struct GeoJsonObject {
    std::string type;
    bool hasFeatures = false;
    CoordinateArrays coordinates;
    std::string geometryType; ///< of the value of "geometry", which has ended
    CoordinateArrays geometry;
    JsonScalar memberId;
    JsonScalar propertyId;

    /// Makes way for the member, which replaces an earlier one of the same name. Throws
    /// GeoJsonFault if features have already been sent.
    void replace(std::string_view member) {
        if (member == "type") {
            type.clear();
        } else if (member == "coordinates") {
            coordinates = {};
        } else if (member == "geometry") {
            geometryType.clear();
            geometry = {};
        } else if (member == "id") {
            memberId = {};
        } else if (member == "properties") {
            propertyId = {};
        } else if (member == "features" && hasFeatures) {
            throw GeoJsonFault("is not GeoJSON: its FeatureCollection has \"features\" twice");
        }
    }
};

} // namespace veldtrim
