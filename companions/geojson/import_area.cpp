#include "area/area_writer.h"
#include "area/degrees.h"
#include "area/feature_refusal.h"
#include "explain/wording.h"
#include "geojson/conversion.h"
#include "geojson/geojson_reader.h"
#include "geojson/messages.h"
#include "geojson/place.h"
#include "geojson/source_kind.h"

#include <algorithm>
#include <array>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace veldtrim {

namespace {

/// Takes the features of the text to the boundary file.
class Import : public FeatureSink {
public:
    Import(AreaWriter& area, const Conversion& conversion) : area_(area), conversion_(conversion) {}

    void onCrs(const std::string& name) override { crs_ = name; }
    void onFeature(MapFeature feature) override;

    /// The coordinate system that the text names; empty if it names none.
    [[nodiscard]] const std::string& crs() const { return crs_; }

private:
    [[nodiscard]] std::int32_t idOf(const MapFeature& feature, const std::string& name) const;

    AreaWriter& area_;
    const Conversion& conversion_;
    std::string crs_;
};

/// Throws the FeatureRefusal for a geometry that holds no polygons.
void refuseOtherTypes(const std::string& name, const std::string& type) {
    constexpr std::array<std::string_view, 5> others{"Point", "MultiPoint", "LineString",
                                                     "MultiLineString", "GeometryCollection"};
    if (type == "Polygon" || type == "MultiPolygon") {
        return;
    }
    if (std::find(others.begin(), others.end(), type) == others.end()) {
        throw FeatureRefusal(name, "has the type " + veldtrim::quoted(type) +
                                       ", which GeoJSON does not have");
    }
    refuseGeometry(name, type);
}

void Import::onFeature(MapFeature feature) {
    const std::string name = "feature " + std::to_string(feature.number);
    if (feature.geometryType.empty()) {
        throw FeatureRefusal(name, "has no geometry");
    }
    refuseOtherTypes(name, feature.geometryType);
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
    const auto number = static_cast<std::int32_t>(feature.number);
    if (conversion_.countIds) {
        return number;
    }
    const JsonScalar& property = feature.propertyId;
    if (!property.text.empty()) {
        if (!property.id) {
            refuseId(name, property.text,
                     "--id-field NAME takes them from the property NAME, --count-ids counts the "
                     "features");
        }
        return *property.id;
    }
    if (!conversion_.idField.empty()) {
        throw FeatureRefusal(name, "has no property " + veldtrim::quoted(conversion_.idField) +
                                       " with an id");
    }
    // Texts as the member "id" are common and mean nothing here.
    return feature.memberId.isNumber && feature.memberId.id ? *feature.memberId.id : number;
}

/// Whether coordinates that can be degrees are degrees in this coordinate system.
bool isGeographic(const std::string& crs) {
    // EPSG numbers systems with degrees from 4001 to 4999. The few with metres among them have
    // coordinates that cannot be degrees.
    constexpr std::size_t digits = 4;
    const std::size_t end = crs.find_last_not_of("0123456789") + 1;
    return crs.empty() || crs.find("CRS84") != std::string::npos ||
           (crs.size() - end == digits && crs[end] == '4');
}

void warnOfDegrees(const BoundingBox& bounds, const std::string& crs) {
    if (canBeDegrees(bounds) && isGeographic(crs)) {
        tell("warning: these coordinates can be degrees (longitude and latitude), but the scans "
             "are probably in metres. GeoJSON is often saved in degrees, EPSG:4326: save the layer "
             "again in the coordinate system of the scans");
    }
}

void tellTotals(const Conversion& conversion, const AreaTotals& totals, const std::string& crs) {
    constexpr std::size_t longestName = 80;
    tell("read " + nameOfSource(conversion.source) + ": " + count(totals.features, "feature") +
         ", coordinate system " + (crs.empty() ? "not named" : shortened(crs, longestName)));
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
    Import import(area, conversion);
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
