#include "gdal/driver.h"

#include "gdal/boundary_dataset.h"
#include "gdal/messages.h"
#include "gdal/new_dataset.h"
#include "gdal/source.h"

#include <exception>
#include <memory>
#include <string>

#include <gdal_priv.h>

namespace veldtrim {

namespace {

constexpr const char* openOptions =
    "<OpenOptionList>"
    "<Option name='SRS' type='string' description='Coordinate system of the file, which does not "
    "name one, such as EPSG:25832'/>"
    "</OpenOptionList>";

/// For the data set or the layer: users need not know which.
std::string creationOptions(const std::string& list) {
    return '<' + list +
           ">"
           "<Option name='HOLES' type='string-select' default='REFUSE' description='What to do "
           "with a polygon with a hole: refuse it, or bridge the hole to the outer ring'>"
           "<Value>REFUSE</Value><Value>BRIDGE</Value></Option>"
           "<Option name='ID_FIELD' type='string' description='Field with the ids of the polygons. "
           "By default id; features without it are counted'/>"
           "</" +
           list + '>';
}

/// Returns what `work` returns, or null after it has reported an exception, such as that memory is
/// exhausted: GDAL expects none.
template <typename Work>
GDALDataset* guarded(const char* name, Work work) {
    try {
        return work();
    } catch (const std::exception& error) {
        reportError(std::string(name) + ": " + error.what());
        return nullptr;
    }
}

int identify(GDALOpenInfo* file) {
    return static_cast<int>(looksLikeBoundary(*file));
}

GDALDataset* open(GDALOpenInfo* file) {
    if (!looksLikeBoundary(*file)) {
        return nullptr;
    }
    return guarded(file->pszFilename, [file] { return BoundaryDataset::open(*file).release(); });
}

/// The type of the list of options depends on the release of GDAL.
template <typename Options>
GDALDataset* create(const char* name, int /*width*/, int /*height*/, int /*bands*/,
                    GDALDataType /*type*/, Options options) {
    return guarded(name, [&] { return NewDataset::create(name, options).release(); });
}

/// GDAL deletes what exists before it creates a data set. This driver's files stay.
CPLErr refuseToDelete(const char* name) {
    reportError(std::string(name) + " is not deleted by this driver: remove the file yourself");
    return CE_Failure;
}

} // namespace

} // namespace veldtrim

void RegisterOGRVeldtrim() {
    const char* const name = "Veldtrim";
    if (!GDAL_CHECK_VERSION(name) || GDALGetDriverByName(name) != nullptr) {
        return;
    }
    auto driver = std::make_unique<GDALDriver>();
    driver->SetDescription(name);
    // There is no entry for the ending .xml: GDAL would take every such name for this format.
    for (const auto& [item, value] : std::initializer_list<std::pair<const char*, std::string>>{
             {GDAL_DMD_LONGNAME, "Veldtrim boundary file"},
             {GDAL_DMD_HELPTOPIC, "docs/gdal.md"},
             {GDAL_DMD_OPENOPTIONLIST, veldtrim::openOptions},
             {GDAL_DMD_CREATIONOPTIONLIST, veldtrim::creationOptions("CreationOptionList")},
             {GDAL_DS_LAYER_CREATIONOPTIONLIST,
              veldtrim::creationOptions("LayerCreationOptionList")},
             {GDAL_DMD_CREATIONFIELDDATATYPES,
              "Integer Integer64 Real String Date Time DateTime IntegerList Integer64List RealList "
              "StringList Binary"},
             {GDAL_DMD_SUPPORTED_SQL_DIALECTS, "OGRSQL SQLITE"},
             {GDAL_DCAP_VECTOR, "YES"},
             {GDAL_DCAP_VIRTUALIO, "YES"},
             {GDAL_DCAP_CREATE, "YES"},
             {GDAL_DCAP_CREATE_LAYER, "YES"},
             {GDAL_DCAP_CREATE_FIELD, "YES"}}) {
        driver->SetMetadataItem(item, value.c_str());
    }
    driver->pfnIdentify = veldtrim::identify;
    driver->pfnOpen = veldtrim::open;
    driver->pfnCreate = veldtrim::create;
    driver->pfnDelete = veldtrim::refuseToDelete;
    GetGDALDriverManager()->RegisterDriver(driver.release());
}
