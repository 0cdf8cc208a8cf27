#include "geojson/geojson_writer.h"

#include "explain/wording.h"
#include "platform/file.h"
#include "text/number_text.h"

#include <stdexcept>
#include <utility>

#include <nlohmann/json.hpp>

namespace veldtrim {

namespace {

/// Returns the form in which programs look for an EPSG code; another name as it is.
std::string urnOf(const std::string& crs) {
    constexpr std::string_view authority = "EPSG:";
    return crs.starts_with(authority) ? "urn:ogc:def:crs:EPSG::" + crs.substr(authority.size())
                                      : crs;
}

std::string crsMember(const std::string& crs) {
    const nlohmann::json member = {{"type", "name"}, {"properties", {{"name", urnOf(crs)}}}};
    try {
        return member.dump();
    } catch (const nlohmann::json::type_error&) {
        throw std::runtime_error("the name of the coordinate system is not UTF-8: " +
                                 veldtrim::quoted(crs));
    }
}

/// Returns the number in a form that JSON parsers do not take for an integer if it is -0, which
/// would lose its sign.
std::string jsonNumber(double value) {
    const std::string text = numberText(value);
    return text == "-0" ? "-0.0" : text;
}

std::string jsonPosition(const BoundaryVertex& vertex) {
    return '[' + jsonNumber(vertex.x) + ',' + jsonNumber(vertex.y) + ']';
}

} // namespace

GeoJsonWriter::GeoJsonWriter(Output output, const std::string& crs) : output_(std::move(output)) {
    std::string text = "{\"type\":\"FeatureCollection\",";
    if (!crs.empty()) {
        text += "\"crs\":" + crsMember(crs) + ',';
    }
    output_(text + "\"features\":[");
}

void GeoJsonWriter::addFeature(std::int32_t id, std::int32_t group, MapShape shape,
                               const MapRing& positions) {
    struct Form {
        std::string_view type;
        std::string_view before; ///< the arrays around the positions
        std::string_view after;
    };
    const Form form = shape == MapShape::Polygon ? Form{"Polygon", "[[", "]]"}
                      : shape == MapShape::Line  ? Form{"LineString", "[", "]"}
                                                 : Form{"Point", "", ""};
    std::string text = features_++ > 0 ? "," : "";
    text += lineEnd;
    text += R"({"type":"Feature","properties":{"id":)" + std::to_string(id) + R"(,"group":)" +
            std::to_string(group) + R"(},"geometry":{"type":")";
    text += form.type;
    text += R"(","coordinates":)";
    text += form.before;
    constexpr std::size_t usualPiece = 1U << 16U;
    for (std::size_t i = 0; i < positions.size(); ++i) {
        text += (i > 0 ? "," : "") + jsonPosition(positions[i]);
        if (text.size() >= usualPiece) {
            output_(std::exchange(text, {}));
        }
    }
    text += form.after;
    output_(text + "}}");
}

void GeoJsonWriter::finish() {
    output_(std::string(lineEnd) + "]}" + std::string(lineEnd));
}

} // namespace veldtrim
