// Boundary file through the driver for GDAL, which agrees with the program's reader on every bit.
// An input that begins with "<" is the file as it stands; any other draws a file of valid form.

#include "drawn_boundaries.h"
#include "gdal/driver.h"
#include "judges/stream_numbers.h"
#include "target.h"

#include <gdal_priv.h>
#include <ogrsf_frmts.h>

using veldtrim::fuzz::require;

static void compare(OGRLayer& layer, const veldtrim::BoundaryModel& model) {
    std::size_t polygons = 0;
    for (const OGRFeatureUniquePtr& feature : layer) {
        const auto& indices = model.polygons().at(polygons++).vertexIndices;
        const OGRGeometryH geometry = OGRGeometry::ToHandle(feature->GetGeometryRef());
        require((geometry == nullptr) == indices.empty(), "a polygon without points");
        const OGRGeometryH line = indices.size() < 3 ? geometry : OGR_G_GetGeometryRef(geometry, 0);
        for (std::size_t i = 0; i < indices.size(); ++i) {
            const auto& vertex = model.vertices().at(static_cast<std::size_t>(indices[i]));
            const int number = static_cast<int>(i);
            require(veldtrim::fuzz::sameBits(OGR_G_GetX(line, number), vertex.x), "an x");
            require(veldtrim::fuzz::sameBits(OGR_G_GetY(line, number), vertex.y), "a y");
        }
    }
    require(polygons == model.polygons().size(), "all polygons are features");
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    RegisterOGRVeldtrim();
    CPLSetErrorHandler(CPLQuietErrorHandler);
    veldtrim::fuzz::Draw input(veldtrim::fuzz::textOf(data, size));
    const bool isDrawn = size == 0 || data[0] != '<';
    const std::string text(isDrawn ? veldtrim::fuzz::drawBoundaries(input).text
                                   : std::string(input.rest()));
    veldtrim::BoundaryModel model;
    const bool isRead = veldtrim::fuzz::readBoundaries(text, model);
    VSILFILE* const file = VSIFOpenL("/vsimem/area.xml", "wb");
    require(VSIFWriteL(text.data(), 1, text.size(), file) == text.size(), "a file in memory");
    require(VSIFCloseL(file) == 0, "a file in memory");
    const GDALDatasetUniquePtr opened(GDALDataset::Open("/vsimem/area.xml", GDAL_OF_VECTOR));
    require(opened ? isRead : !isDrawn, "the driver opens what the program reads");
    if (opened) {
        compare(*opened->GetLayer(0), model);
    }
    return 0;
}
