#include "geojson/source_kind.h"

#include "explain/content_kind.h"
#include "geojson/place.h"

#include <stdexcept>

#include <boost/filesystem/operations.hpp>

namespace veldtrim {

void refuseOtherKinds(const std::string& source) {
    // What is read from a pipe to recognise its content would be missing later.
    boost::system::error_code error;
    if (isStandardStream(source) || !boost::filesystem::is_regular_file(source, error)) {
        return;
    }
    const ContentKind kind = contentKind(source);
    std::string advice = commandToGeoJson(kind, source);
    switch (kind) {
    case ContentKind::Gzip:
    case ContentKind::Zip:
    case ContentKind::Utf16:
        advice = "convert it: " + commandToText(kind, source);
        break;
    case ContentKind::Xml:
        throw std::runtime_error(source +
                                 " is XML, not GeoJSON: if it is a boundary file, Veldtrim "
                                 "reads it as it is");
    case ContentKind::Dbase:
        advice = "give the .shp file of the same name to ogr2ogr -f GeoJSON";
        break;
    case ContentKind::Las:
    case ContentKind::Tiff:
    case ContentKind::Binary:
        advice = "the area must be given as polygons";
        break;
    default:
        if (advice.empty()) {
            return;
        }
        advice = "save it as GeoJSON in the coordinate system of the scans, in QGIS with Export > "
                 "Save Features As..., or by " +
                 advice;
    }
    throw std::runtime_error(source + " is " + std::string(nameOf(kind)) +
                             ", not GeoJSON: " + advice);
}

} // namespace veldtrim
