#include "gdal/boundary_dataset.h"

#include "gdal/messages.h"
#include "gdal/source.h"

#include <string>
#include <utility>

#include <boost/filesystem/path.hpp>

namespace veldtrim {

namespace {

/// Tells which polygons are no areas on a map.
void warnOfShapes(const std::string& name, const BoundaryFeatures& features) {
    std::size_t number = 0;
    for (std::size_t i = 0; i < features.size(); ++i) {
        number += features.shape(i) != MapShape::Polygon ? 1 : 0;
    }
    if (number > 0) {
        reportWarning(name + ": the polygons of fewer than three points, " +
                      std::to_string(number) + " of " + std::to_string(features.size()) +
                      ", are lines, points, or features without geometry");
    }
}

/// Returns the layer's name, which is that of the file without its folder and its ending.
std::string layerName(const std::string& file) {
    const std::string stem = boost::filesystem::path(file).stem().string();
    return stem.empty() || stem == "." ? "boundary" : stem;
}

} // namespace

std::unique_ptr<BoundaryDataset> BoundaryDataset::open(const GDALOpenInfo& file) {
    const std::string name = file.pszFilename;
    if (file.eAccess == GA_Update) {
        reportError(name + " cannot be changed: write a new boundary file under another name");
        return nullptr;
    }
    OGRSpatialReference system;
    const char* const systemOption = CSLFetchNameValue(file.papszOpenOptions, "SRS");
    if (systemOption != nullptr && system.SetFromUserInput(systemOption) != OGRERR_NONE) {
        reportError("SRS=" + std::string(systemOption) + " does not name a coordinate system");
        return nullptr;
    }
    system.SetAxisMappingStrategy(OAMS_TRADITIONAL_GIS_ORDER);
    auto features = std::make_unique<BoundaryFeatures>();
    if (const std::string failure = readSource(name, *features); !failure.empty()) {
        reportError(name + ' ' + failure);
        return nullptr;
    }
    warnOfShapes(name, *features);
    return std::make_unique<BoundaryDataset>(std::make_unique<BoundaryLayer>(
        layerName(name), std::move(features), systemOption == nullptr ? nullptr : &system));
}

BoundaryDataset::BoundaryDataset(std::unique_ptr<BoundaryLayer> layer) : layer_(std::move(layer)) {}

} // namespace veldtrim
