#include "geojson/geojson_reader.h"

#include "area/feature_refusal.h"
#include "explain/wording.h"
#include "geojson/broken_json.h"
#include "geojson/geojson_object.h"

#include <algorithm>
#include <charconv>
#include <system_error>
#include <utility>

#include <nlohmann/json.hpp>

namespace veldtrim {

namespace {

using Json = nlohmann::json;

constexpr const char* convertAdvice =
    ": ogr2ogr -f GeoJSON NEWFILE OLDFILE converts other kinds of JSON, such as Esri JSON and "
    "GeoJSON with a feature in each line";

/// What an open array or object is.
enum class Role : std::uint8_t {
    Object,      ///< the outermost object, a feature, or the value of "geometry"
    FeatureList, ///< the value of "features"
    Coordinates, ///< the value of "coordinates", or an array in it
    Properties,  ///< the value of "properties"
    Crs,         ///< the value of "crs"
    CrsNames,    ///< the value of its "properties"
    Other        ///< anything else; its content is ignored
};

/// Receives the events of the JSON parser. All of them return true: the parser goes on.
class Events : public Json::json_sax_t {
public:
    Events(std::string_view text, const std::string& idProperty, FeatureSink& sink)
        : text_(text), idProperty_(idProperty), sink_(sink) {}

    bool null() override { return scalar({}); }
    bool boolean(bool value) override { return scalar({value ? "true" : "false", {}, false}); }
    bool number_integer(number_integer_t value) override { return integer(value); }
    bool number_unsigned(number_unsigned_t value) override { return integer(value); }
    bool number_float(number_float_t value, const string_t& text) override;
    bool string(string_t& value) override;
    bool binary(binary_t& /*value*/) override { return true; }
    bool start_object(std::size_t /*elements*/) override { return open(false); }
    bool start_array(std::size_t /*elements*/) override { return open(true); }
    bool end_object() override { return close(); }
    bool end_array() override { return close(); }
    bool key(string_t& value) override;
    bool parse_error(std::size_t position, const std::string& token,
                     const nlohmann::detail::exception& error) override;

private:
    template <typename Integer>
    bool integer(Integer value) {
        if (isIn(Role::Coordinates)) {
            objects_.back().coordinates.number(static_cast<double>(value));
            return true;
        }
        return scalar({std::to_string(value), integerId(static_cast<double>(value)), true});
    }

    [[nodiscard]] bool isIn(Role role) const { return !open_.empty() && open_.back() == role; }
    [[nodiscard]] Role roleOf(bool isArray) const;
    [[nodiscard]] Role roleOfArray() const;
    [[nodiscard]] Role roleOfObject() const;
    bool open(bool isArray);
    bool close();
    bool scalar(const JsonScalar& value);
    void endObject();
    void deliver(GeoJsonObject& object, std::string type, CoordinateArrays& coordinates);

    std::string_view text_;
    const std::string& idProperty_;
    FeatureSink& sink_;
    std::vector<Role> open_;
    std::vector<GeoJsonObject> objects_; ///< at most three: a collection, a feature, its geometry
    std::string key_; ///< the latest key, unless it is in a value that is ignored
    std::size_t features_ = 0;
};

bool Events::number_float(number_float_t value, const string_t& text) {
    // Conversion by the C library is not exact on every system.
    double exact = value;
    if (std::from_chars(text.data(), text.data() + text.size(), exact).ec != std::errc()) {
        exact = value; // too close to 0 for a double
    }
    if (isIn(Role::Coordinates)) {
        objects_.back().coordinates.number(exact);
        return true;
    }
    return scalar({text, integerId(exact), true});
}

bool Events::string(string_t& value) {
    if (isIn(Role::Object) && key_ == "type") {
        objects_.back().type = value;
        return true;
    }
    if (isIn(Role::CrsNames) && key_ == "name") {
        sink_.onCrs(value);
        return true;
    }
    return scalar({veldtrim::quoted(value), integerId(value), false});
}

bool Events::key(string_t& value) {
    if (!isIn(Role::Other)) {
        key_ = std::move(value);
    }
    if (isIn(Role::Object)) {
        objects_.back().replace(key_);
    }
    return true;
}

bool Events::scalar(const JsonScalar& value) {
    if (open_.empty()) {
        throw GeoJsonFault("is not GeoJSON, which is an object in braces");
    }
    switch (open_.back()) {
    case Role::Coordinates:
        objects_.back().coordinates.other();
        break;
    case Role::FeatureList:
        throw GeoJsonFault("is not GeoJSON: \"features\" holds something that is not a feature");
    case Role::Object:
        if (key_ == "id") {
            objects_.back().memberId = value;
        }
        break;
    case Role::Properties:
        if (key_ == idProperty_) {
            objects_.back().propertyId = value;
        }
        break;
    default:
        break;
    }
    return true;
}

Role Events::roleOf(bool isArray) const {
    if (open_.empty() || isIn(Role::FeatureList)) {
        return isArray ? Role::Other : Role::Object;
    }
    if (isIn(Role::Coordinates)) {
        return isArray ? Role::Coordinates : Role::Other;
    }
    if (isIn(Role::Crs)) {
        return !isArray && key_ == "properties" ? Role::CrsNames : Role::Other;
    }
    if (isIn(Role::Object)) {
        return isArray ? roleOfArray() : roleOfObject();
    }
    return Role::Other;
}

/// Returns the role of an array that is the member `key_` of a GeoJSON object.
Role Events::roleOfArray() const {
    if (key_ == "coordinates") {
        return Role::Coordinates;
    }
    return key_ == "features" && objects_.size() == 1 ? Role::FeatureList : Role::Other;
}

/// Returns the role of an object that is the member `key_` of a GeoJSON object.
Role Events::roleOfObject() const {
    constexpr std::size_t deepest = 3;
    if (key_ == "geometry" && objects_.size() < deepest) {
        return Role::Object;
    }
    if (key_ == "properties") {
        return Role::Properties;
    }
    return key_ == "crs" ? Role::Crs : Role::Other;
}

bool Events::open(bool isArray) {
    const Role role = roleOf(isArray);
    const bool isFirst = open_.empty();
    if (role == Role::Other && (isFirst || isIn(Role::FeatureList))) {
        return scalar({});
    }
    if (role == Role::Object) {
        objects_.emplace_back();
    } else if (role == Role::FeatureList) {
        objects_.back().hasFeatures = true;
    } else if (role == Role::Coordinates) {
        objects_.back().coordinates.open();
    } else if (role == Role::Other) {
        scalar({isArray ? "[...]" : "{...}", {}, false}); // in place of a coordinate or an id
    }
    open_.push_back(role);
    return true;
}

bool Events::close() {
    const Role role = open_.back();
    open_.pop_back();
    if (role == Role::Coordinates) {
        objects_.back().coordinates.close();
    } else if (role == Role::Object) {
        endObject();
    }
    return true;
}

/// Ends a feature, the value of "geometry" or the outermost object, whatever its type.
void Events::endObject() {
    GeoJsonObject object = std::move(objects_.back());
    objects_.pop_back();
    if (isIn(Role::Object)) {
        objects_.back().geometryType = std::move(object.type);
        objects_.back().geometry = std::move(object.coordinates);
    } else if (object.type == "Feature") {
        deliver(object, std::move(object.geometryType), object.geometry);
    } else if (isIn(Role::FeatureList)) {
        throw GeoJsonFault("is not GeoJSON: element " + std::to_string(features_ + 1) +
                           " of \"features\" is not a Feature" + convertAdvice);
    } else if (object.type == "FeatureCollection") {
        if (!object.hasFeatures) {
            throw GeoJsonFault("is not GeoJSON: its FeatureCollection has no \"features\"");
        }
    } else if (object.type.empty()) {
        throw GeoJsonFault("is not GeoJSON: the outermost object has no \"type\"");
    } else {
        deliver(object, std::move(object.type), object.coordinates);
    }
}

void Events::deliver(GeoJsonObject& object, std::string type, CoordinateArrays& coordinates) {
    MapFeature feature;
    feature.number = ++features_;
    feature.geometryType = std::move(type);
    feature.memberId = std::move(object.memberId);
    feature.propertyId = std::move(object.propertyId);
    constexpr std::size_t polygonDepth = 3;
    const bool isMany = feature.geometryType == "MultiPolygon";
    if (isMany || feature.geometryType == "Polygon") {
        feature.isEmpty = coordinates.isEmpty();
        feature.isRegular =
            feature.isEmpty || coordinates.hasDepth(polygonDepth + (isMany ? 1 : 0));
        feature.polygons = std::move(coordinates.polygons());
    }
    sink_.onFeature(std::move(feature));
}

bool Events::parse_error(std::size_t position, const std::string& /*token*/,
                         const nlohmann::detail::exception& error) {
    constexpr char recordSeparator = '\x1E'; // before each text, RFC 8142
    const bool isSecondText =
        open_.empty() && features_ > 0 && position > 0 && text_.substr(position - 1, 1) == "{";
    throw GeoJsonFault(describeBrokenJson(text_, position, error.what()) +
                       (isSecondText || text_.starts_with(recordSeparator) ? convertAdvice : ""));
}

} // namespace

void readGeoJson(std::string_view text, const std::string& idProperty, FeatureSink& sink) {
    // The parser takes a zero byte for the end of the text.
    if (const std::size_t zero = text.find('\0'); zero != std::string_view::npos) {
        throw GeoJsonFault(describeBrokenJson(text, zero + 1, "a zero byte"));
    }
    Events events(text, idProperty, sink);
    Json::sax_parse(text.begin(), text.end(), &events);
}

} // namespace veldtrim
