/// A boundary file that is being written, as a data set of GDAL.
#pragma once

#include "gdal/new_layer.h"
#include "gdal/target.h"
#include "gdal/versions.h"

#include <memory>
#include <optional>
#include <string>

#include <gdal_priv.h>

namespace veldtrim {

/// A data set to which one layer can be added. The file has its name when the data set is closed
/// and no error was reported.
class NewDataset : public GDALDataset {
public:
    /// Creates the file, incomplete and under a name of its own. Returns null after it has reported
    /// an error if the file exists or cannot be created, or an option has no valid value.
    static std::unique_ptr<NewDataset> create(const char* name, CSLConstList options);

    NewDataset(const char* name, NewLayerOptions options);
    NewDataset(const NewDataset&) = delete;
    NewDataset& operator=(const NewDataset&) = delete;

    /// Completes the file, if all went well.
    ~NewDataset() override;

    int GetLayerCount() VELDTRIM_GDAL_CONST override { return layer_ ? 1 : 0; }
    VELDTRIM_GDAL_CONST OGRLayer* GetLayer(int position) VELDTRIM_GDAL_CONST override {
        return position == 0 ? layer_.get() : nullptr;
    }
    int TestCapability(const char* capability) VELDTRIM_GDAL_CONST override {
        return static_cast<int>(EQUAL(capability, ODsCCreateLayer));
    }

protected:
#ifdef VELDTRIM_GDAL_GEOMETRY_FIELDS
    OGRLayer* ICreateLayer(const char* name, const OGRGeomFieldDefn* geometry,
                           CSLConstList options) override {
        return addLayer(name, geometry == nullptr ? nullptr : geometry->GetSpatialRef(), options);
    }
#else
    OGRLayer* ICreateLayer(const char* name, SystemOfLayer system, OGRwkbGeometryType /*type*/,
                           char** options) override {
        return addLayer(name, system, options);
    }
#endif

private:
    OGRLayer* addLayer(const char* name, const OGRSpatialReference* system, CSLConstList options);

    NewLayerOptions options_;
    Target target_;
    std::unique_ptr<NewLayer> layer_;
    bool hasRefusedLayer_ = false;
};

} // namespace veldtrim
