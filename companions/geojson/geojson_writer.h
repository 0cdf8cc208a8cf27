/// Writes features as GeoJSON.
#pragma once

#include "area/boundary_features.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace veldtrim {

/// Writes the text of a FeatureCollection, a line for each feature.
class GeoJsonWriter {
public:
    /// Receives the text in pieces of any size.
    using Output = std::function<void(std::string_view)>;

    /// Sends the beginning of the text. `crs` names the coordinate system, such as "EPSG:25832" or
    /// a URN; if it is empty, the text names none. Throws std::runtime_error if it is not UTF-8.
    GeoJsonWriter(Output output, const std::string& crs);

    /// Appends a feature. `positions` are those of the shape, which must not be `Nothing`; the ring
    /// of a `Polygon` must be closed. The coordinates read back to the last bit.
    void addFeature(std::int32_t id, std::int32_t group, MapShape shape, const MapRing& positions);

    /// Sends the rest of the text.
    void finish();

    /// How many features were appended.
    [[nodiscard]] std::size_t features() const { return features_; }

private:
    Output output_;
    std::size_t features_ = 0;
};

} // namespace veldtrim
