// Boundary file through the driver for GDAL, which agrees with the program's reader on every bit.
// An input that begins with "<" is the file as it stands; any other draws a file of valid form.

#include "drawn_boundaries.h"
#include "gdal/driver.h"
#include "target.h"

#include <ogrsf_frmts.h>

namespace veldtrim::fuzz {

static void compare(OGRLayer& layer, const BoundaryModel& model) {
    std::size_t polygons = 0;
    for (const OGRFeatureUniquePtr& feature : layer) {
        const auto& indices = model.polygons().at(polygons++).vertexIndices;
        auto* const geometry = OGRGeometry::ToHandle(feature->GetGeometryRef());
        require((geometry == nullptr) == indices.empty(), "a polygon without points");
        auto* const line = indices.size() < 3 ? geometry : OGR_G_GetGeometryRef(geometry, 0);
        for (int i = 0; const std::int32_t index : indices) {
            const auto& vertex = model.vertices().at(static_cast<std::size_t>(index));
            require(sameBits(OGR_G_GetX(line, i), vertex.x), "an x");
            require(sameBits(OGR_G_GetY(line, i++), vertex.y), "a y");
        }
    }
    require(polygons == model.polygons().size(), "all polygons are features");
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    RegisterOGRVeldtrim();
    CPLSetErrorHandler(CPLQuietErrorHandler);
    Draw input(textOf(data, size));
    const bool isDrawn = size == 0 || data[0] != '<';
    const std::string text(isDrawn ? drawBoundaries(input).text : std::string(input.rest()));
    BoundaryModel model;
    const bool isRead = readBoundaries(text, model);
    VSILFILE* const file = VSIFOpenL("/vsimem/area.xml", "wb");
    require(VSIFWriteL(text.data(), 1, text.size(), file) == text.size(), "the file is written");
    static_cast<void>(VSIFCloseL(file));
    const GDALDatasetUniquePtr opened(GDALDataset::Open("/vsimem/area.xml", GDAL_OF_VECTOR));
    require(opened ? isRead : !isDrawn, "the driver opens what the program reads");
    if (opened) {
        compare(*opened->GetLayer(0), model);
    }
    return 0;
}

} // namespace veldtrim::fuzz
