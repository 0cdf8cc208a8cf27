#include "area/area_writer.h"
#include "area/degrees.h"
#include "area/feature_refusal.h"
#include "geojson/conversion.h"
#include "geojson/geojson_reader.h"
#include "geojson/messages.h"
#include "geojson/place.h"
#include "geojson/source_kind.h"

#include <cmath>
#include <stdexcept>
#include <utility>

namespace veldtrim {

namespace {

/// Takes the features of the text to the boundary file.
class Import : public FeatureSink {
public:
    Import(AreaWriter& area, const std::string& idField) : area_(area), idField_(idField) {}

    void onCrs(const std::string& name) override { crs_ = name; }
    void onFeature(MapFeature feature) override;

    /// The coordinate system that the text names; empty if it names none.
    [[nodiscard]] const std::string& crs() const { return crs_; }

private:
    [[nodiscard]] std::int32_t idOf(const MapFeature& feature, const std::string& name) const;

    AreaWriter& area_;
    const std::string& idField_;
    std::string crs_;
};

void Import::onFeature(MapFeature feature) {
    const std::string name = "feature " + std::to_string(feature.number);
    if (feature.geometryType.empty()) {
        throw FeatureRefusal(name, "has no geometry");
    }
    if (feature.geometryType != "Polygon" && feature.geometryType != "MultiPolygon") {
        refuseGeometry(name, feature.geometryType);
    }
    if (feature.isEmpty) {
        throw FeatureRefusal(name, "has an empty geometry or an empty part");
    }
    if (!feature.isRegular) {
        throw FeatureRefusal(name,
                             "has coordinates that are not those of a " + feature.geometryType);
    }
    area_.addFeature(name, idOf(feature, name), std::move(feature.polygons));
}

std::int32_t Import::idOf(const MapFeature& feature, const std::string& name) const {
    const JsonScalar& property = feature.propertyId;
    if (!property.text.empty()) {
        if (!property.id) {
            refuseId(name, property.text);
        }
        return *property.id;
    }
    if (!idField_.empty()) {
        throw FeatureRefusal(name, "has no property \"" + idField_ + "\" with an id");
    }
    // Texts as the member "id" are common and mean nothing here.
    return feature.memberId.isNumber && feature.memberId.id
               ? *feature.memberId.id
               : static_cast<std::int32_t>(feature.number);
}

bool isGeographic(const std::string& crs) {
    return crs.empty() || crs.find("CRS84") != std::string::npos || crs.ends_with(":4326");
}

void warnOfDegrees(const BoundingBox& bounds, const std::string& crs) {
    if (canBeDegrees(bounds) && isGeographic(crs)) {
        tell("warning: these coordinates can be degrees (longitude and latitude), but the scans "
             "are probably in metres. GeoJSON is often saved in degrees, EPSG:4326: save the layer "
             "again in the coordinate system of the scans");
    }
}

void tellTotals(const Conversion& conversion, const AreaTotals& totals, const std::string& crs) {
    tell("read " + nameOfSource(conversion.source) + ": " + count(totals.features, "feature") +
         ", coordinate system " + (crs.empty() ? "not named" : crs));
    if (totals.holes > 0) {
        tell("joined " + count(totals.holes, "hole") + " to the outer rings" +
             (totals.slantedBridges > 0
                  ? ", with " + count(totals.slantedBridges, "slanted bridge") +
                        ": points exactly on a slanted bridge may be dropped"
                  : ""));
    }
    tell("wrote " + nameOfTarget(conversion.target) + ": " + count(totals.polygons, "polygon") +
         ", " + extent(totals.vertices, totals.bounds));
    warnOfDegrees(totals.bounds, crs);
}

} // namespace

void importArea(const Conversion& conversion) {
    refuseOtherKinds(conversion.source);
    Destination target(conversion.target);
    BoundaryWriter writer([&target](std::string_view text) { target.write(text); });
    AreaWriter area(writer, {conversion.bridgeHoles, "--holes bridge"});
    Import import(area, conversion.idField);
    try {
        const std::string text = readWhole(conversion.source);
        readGeoJson(text, conversion.idField.empty() ? "id" : conversion.idField, import);
    } catch (const GeoJsonFault& fault) {
        throw std::runtime_error(nameOfSource(conversion.source) + ' ' + fault.what());
    } catch (const FeatureRefusal& refusal) {
        throw std::runtime_error(nameOfSource(conversion.source) + ": " + refusal.what());
    }
    if (area.totals().polygons == 0) {
        throw std::runtime_error(nameOfSource(conversion.source) + " holds no polygon");
    }
    writer.finish();
    target.publish();
    tellTotals(conversion, area.totals(), import.crs());
}

} // namespace veldtrim
