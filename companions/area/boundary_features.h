/// The polygons of a boundary file as features of a map.
#pragma once

#include "area/map_polygon.h"
#include "boundary/file/boundary_walk.h"
#include "boundary/model/boundary_model.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace veldtrim {

/// What a polygon is on a map, where a ring needs three vertices.
enum class MapShape : std::uint8_t { Nothing, Point, Line, Polygon };

/// The polygons of a boundary file, in the order of the file, each with what the model does not
/// hold.
class BoundaryFeatures : private BoundarySink {
public:
    /// Reads the boundary file at `path` into this object, which must be new. Returns false if that
    /// fails; `failure` then tells why.
    bool readFile(const std::string& path);

    /// The same for the text of a boundary file.
    bool readText(const std::string& text);

    /// Why reading failed, as a predicate such as "is empty".
    [[nodiscard]] const std::string& failure() const { return failure_; }

    [[nodiscard]] std::size_t size() const { return ids_.size(); }

    [[nodiscard]] std::int32_t id(std::size_t position) const { return ids_[position]; }

    /// Which group of the file the polygon is in. Counts all groups, from 1.
    [[nodiscard]] std::int32_t group(std::size_t position) const { return groups_[position]; }

    [[nodiscard]] MapShape shape(std::size_t position) const;

    /// The vertices, to the last bit. The ring of a `Polygon` is closed and has at least four: one
    /// that the file closes is returned as it is.
    [[nodiscard]] MapRing positions(std::size_t position) const;

    [[nodiscard]] const BoundaryModel& model() const { return model_; }

private:
    void onGroup(std::string_view type, bool isRead) override;
    void onPolygon(std::int32_t id) override;
    void onFault(const BoundaryFault& fault) override;

    BoundaryModel model_;
    std::vector<std::int32_t> ids_;
    std::vector<std::int32_t> groups_;
    std::int32_t group_ = 0;
    std::string path_; ///< empty while a text is read
    std::string failure_;
};

} // namespace veldtrim
