/// Walks through a boundary file, fills a model, and reports what it finds.
#pragma once

#include "boundary/model/boundary_model.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace veldtrim {

class CMarkupSTL;

/// Why a boundary file could not be read. The views are valid only during the call of onFault.
struct BoundaryFault {
    enum class Kind : std::uint8_t {
        NotLoaded,  ///< the file cannot be read, is not XML, or holds no element
        NoTavelDgm, ///< the root element has no child TavelDGM
        PolygonId,  ///< the id of a polygon is missing or not an integer
        Point       ///< an attribute of a point is missing or not a number
    };
    Kind kind = Kind::NotLoaded;

    // NotLoaded.
    std::string_view parseError; ///< the error message of the XML parser; empty if it has none
    std::int32_t line = 0;       ///< the line of that error, from 1; 0 if it has no place
    std::int32_t column = 0;     ///< its byte in the line, from 1; 0 if it has no place

    // PolygonId and Point.
    std::size_t polygon = 0;    ///< position among the polygons of the groups read, from 0
    std::size_t point = 0;      ///< Point: position in the polygon, from 0
    std::int32_t polygonId = 0; ///< Point: the id of that polygon
    const char* attribute = ""; ///< the name of the faulty attribute
    std::string_view value;     ///< its value as written in the file; empty if it is missing
};

/// Receives what the walk finds, in document order. By default, each event is ignored.
class BoundarySink {
public:
    BoundarySink() = default;
    BoundarySink(const BoundarySink&) = delete;
    BoundarySink& operator=(const BoundarySink&) = delete;
    virtual ~BoundarySink() = default;

    /// The element TavelDGM, which holds the groups.
    virtual void onTavelDgm() {}

    /// A group. `isRead` is true if its type is "boundaries"; else the walk ignores its content.
    virtual void onGroup(std::string_view /*type*/, bool /*isRead*/) {}

    /// The start of a polygon.
    virtual void onPolygon(std::int32_t /*id*/) {}

    /// A point that was read. It is the child position of the document.
    virtual void onPoint(const CMarkupSTL& /*document*/) {}

    /// The end of that polygon, which now belongs to the model.
    virtual void onPolygonRead(std::size_t /*points*/) {}

    /// The failure that ends the walk.
    virtual void onFault(const BoundaryFault& /*fault*/) {}
};

/// Appends the polygons of the boundary file at `path` to `model` and reports to `sink`.
/// readin_b_XML describes the format.
///
/// Returns false after the first failure, which is the last event that `sink` receives. Vertices
/// and whole polygons read before the failure stay in the model.
bool walkBoundaryFile(const std::string& path, BoundaryModel& model, BoundarySink& sink);

/// The same for the text of a boundary file up to its first NUL. Memory for a second copy of the
/// text is needed during the call.
bool walkBoundaryText(const std::string& text, BoundaryModel& model, BoundarySink& sink);

} // namespace veldtrim
