/// The layer whose features become the polygons of a new boundary file.
#pragma once

#include "area/area_writer.h"
#include "gdal/layer_definition.h"
#include "gdal/target.h"
#include "gdal/versions.h"

#include <cstddef>
#include <cstdint>
#include <string>

#include <ogrsf_frmts.h>

namespace veldtrim {

/// The creation options of a data set and its layer, and what is known of the layer.
struct NewLayerOptions {
    bool bridgeHoles = false;
    std::string idField;       ///< empty: "id", and features without it are counted from 1
    bool isGeographic = false; ///< the coordinate system has degrees
};

/// A layer that features can be written to. It accepts all fields, but keeps only the ids.
class NewLayer : public OGRLayer {
public:
    /// The target must live as long as this object.
    NewLayer(const char* name, Target& target, NewLayerOptions options);

    /// Writes the end of the file and gives it its name. Returns false after it has reported an
    /// error if that fails, a feature was refused, there is no polygon, or GDAL reported an error
    /// after the creation of this layer that is still its latest: then there is no new file.
    bool publish();

    void ResetReading() override {}
    OGRFeature* GetNextFeature() override { return nullptr; }
    OGRErr ICreateFeature(OGRFeature* feature) override;
    OGRErr CreateField(FieldToCreate field, int isApproximationAllowed) override;
    VELDTRIM_GDAL_CONST OGRFeatureDefn* GetLayerDefn() VELDTRIM_GDAL_CONST override {
        return definition_.get();
    }
    int TestCapability(const char* capability) VELDTRIM_GDAL_CONST override;

private:
    void complete();
    void add(const OGRFeature& feature);
    [[nodiscard]] std::int32_t idOf(const OGRFeature& feature, const std::string& name) const;
    [[nodiscard]] const char* nameOfIdField() const;
    [[nodiscard]] std::string whyUnwritten() const;

    LayerDefinition definition_;
    NewLayerOptions options_;
    Target& target_;
    BoundaryWriter writer_;
    AreaWriter area_;
    std::int32_t features_ = 0; ///< including refused ones
    std::size_t refused_ = 0;
    bool isBroken_ = false; ///< writing has failed
    bool hasWarned_ = false;
    std::uint32_t errorsBefore_;
};

} // namespace veldtrim
