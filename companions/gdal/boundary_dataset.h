/// A boundary file that was read, as a data set of GDAL.
#pragma once

#include "gdal/boundary_layer.h"
#include "gdal/versions.h"

#include <memory>

#include <gdal_priv.h>

namespace veldtrim {

/// A data set with one layer, which cannot be changed.
class BoundaryDataset : public GDALDataset {
public:
    /// Reads the file, which `looksLikeBoundary` has recognised. Returns null after it has reported
    /// an error if the file is not a boundary file, or is opened for writing, or the open option
    /// SRS does not name a coordinate system.
    static std::unique_ptr<BoundaryDataset> open(const GDALOpenInfo& file);

    explicit BoundaryDataset(std::unique_ptr<BoundaryLayer> layer);

    int GetLayerCount() VELDTRIM_GDAL_CONST override { return 1; }
    VELDTRIM_GDAL_CONST OGRLayer* GetLayer(int position) VELDTRIM_GDAL_CONST override {
        return position == 0 ? layer_.get() : nullptr;
    }

private:
    std::unique_ptr<BoundaryLayer> layer_;
};

} // namespace veldtrim
