// GeoJSON to boundary file. A parser that keeps the whole text in memory judges which polygons
// there are; the reader of boundary files judges what was written.

#include "area/area_writer.h"
#include "area/boundary_features.h"
#include "area/feature_refusal.h"
#include "geojson/geojson_reader.h"
#include "judges/stream_numbers.h"
#include "target.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <nlohmann/json.hpp>

namespace {

using veldtrim::fuzz::require;
using Json = nlohmann::json;

class Import : public veldtrim::FeatureSink {
public:
    explicit Import(veldtrim::AreaWriter& area) : area_(area) {}
    void onFeature(veldtrim::MapFeature feature) override {
        if (feature.isEmpty || !feature.isRegular || feature.polygons.empty()) {
            throw veldtrim::FeatureRefusal("a feature", "is none");
        }
        area_.addFeature("a feature", 1, std::move(feature.polygons));
    }
    void onCrs(const std::string& /*name*/) override {}

private:
    veldtrim::AreaWriter& area_;
};

/// Appends the polygons of a geometry, each as the array of its rings.
void collect(const Json& geometry, std::vector<Json>& polygons) {
    const Json& coordinates = geometry.at("coordinates");
    if (geometry.at("type") == "Polygon") {
        polygons.push_back(coordinates);
    } else {
        polygons.insert(polygons.end(), coordinates.begin(), coordinates.end());
    }
}

std::vector<Json> polygonsOf(const Json& root) {
    std::vector<Json> polygons;
    if (root.at("type") == "Feature") {
        collect(root.at("geometry"), polygons);
    } else if (root.at("type") != "FeatureCollection") {
        collect(root, polygons);
    } else {
        for (const Json& feature : root.at("features")) {
            collect(feature.at("geometry"), polygons);
        }
    }
    return polygons;
}

void checkRing(const Json& ring, const std::vector<veldtrim::BoundaryVertex>& written) {
    const bool isClosed =
        ring.front().at(0) == ring.back().at(0) && ring.front().at(1) == ring.back().at(1);
    require(written.size() == ring.size() - (isClosed ? 1 : 0), "all vertices are written");
    for (std::size_t i = 0; i < written.size(); ++i) {
        require(veldtrim::fuzz::sameBits(written[i].x, ring.at(i).at(0).get<double>()) &&
                    veldtrim::fuzz::sameBits(written[i].y, ring.at(i).at(1).get<double>()),
                "a vertex");
    }
}

void checkWritten(const Json& root, const std::string& xml) {
    veldtrim::BoundaryFeatures features;
    require(features.readText(xml), "what was written is a boundary file");
    const std::vector<Json> polygons = polygonsOf(root);
    require(features.size() == polygons.size(), "all polygons are written");
    for (std::size_t i = 0; i < polygons.size(); ++i) {
        std::vector<veldtrim::BoundaryVertex> written;
        for (const std::int32_t index : features.model().polygons()[i].vertexIndices) {
            written.push_back(features.model().vertices()[static_cast<std::size_t>(index)]);
        }
        if (polygons[i].size() == 1) {
            checkRing(polygons[i][0], written);
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text = veldtrim::fuzz::textOf(data, size);
    std::string xml;
    veldtrim::BoundaryWriter writer([&xml](std::string_view piece) { xml += piece; });
    veldtrim::AreaWriter area(writer, {true, "bridge"});
    Import import(area);
    // This parser, too, would take a zero byte for the end of the text.
    const Json root = text.find('\0') == std::string_view::npos ? Json::parse(text, nullptr, false)
                                                                : Json(Json::value_t::discarded);
    try {
        veldtrim::readGeoJson(text, "id", import);
        require(!root.is_discarded(), "broken JSON is refused");
        writer.finish();
        // Of members that come twice, one parser keeps the first and the other the last.
        if (area.totals().polygons == polygonsOf(root).size()) {
            checkWritten(root, xml);
        }
    } catch (const veldtrim::GeoJsonFault& fault) {
        require(root.is_discarded() || !std::string_view(fault.what()).starts_with("is broken"),
                "only broken JSON is called that");
    } catch (const veldtrim::FeatureRefusal&) { // NOLINT(bugprone-empty-catch): nothing is written
    } catch (const Json::exception&) { // NOLINT(bugprone-empty-catch): a member comes twice
    }
    return 0;
}
