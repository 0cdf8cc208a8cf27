/// The polygons of a boundary file that was read, as a layer.
#pragma once

#include "area/boundary_features.h"
#include "gdal/layer_definition.h"
#include "gdal/versions.h"

#include <cstddef>
#include <memory>
#include <string>

#include <ogrsf_frmts.h>

namespace veldtrim {

/// A layer with a feature for each polygon, in the order of the file and numbered from 1, with the
/// fields `id` and `group`.
///
/// Its type of geometry is polygon unless the file has polygons of fewer than three points. Those
/// are lines, points, or features without geometry.
class BoundaryLayer : public OGRLayer, public OGRGetNextFeatureThroughRaw<BoundaryLayer> {
public:
    /// `system` may be null.
    BoundaryLayer(const std::string& name, std::unique_ptr<const BoundaryFeatures> features,
                  const OGRSpatialReference* system);

    void ResetReading() override { next_ = 0; }
    OGRFeature* GetFeature(GIntBig number) override;
    GIntBig GetFeatureCount(int force) override;
    VELDTRIM_GDAL_CONST OGRFeatureDefn* GetLayerDefn() VELDTRIM_GDAL_CONST override {
        return definition_.get();
    }
    int TestCapability(const char* capability) VELDTRIM_GDAL_CONST override;

    DEFINE_GET_NEXT_FEATURE_THROUGH_RAW(BoundaryLayer)

private:
    OGRFeature* GetNextRawFeature();
    [[nodiscard]] OGRFeature* makeFeature(std::size_t position) const;
    [[nodiscard]] bool hasFilter() const {
        return m_poFilterGeom != nullptr || m_poAttrQuery != nullptr;
    }

    std::unique_ptr<const BoundaryFeatures> features_;
    LayerDefinition definition_;
    std::size_t next_ = 0;
};

} // namespace veldtrim
