#include "gdal/boundary_layer.h"

#include "gdal/geometry.h"

#include <utility>

namespace veldtrim {

namespace {

constexpr int idField = 0;
constexpr int groupField = 1;

OGRwkbGeometryType typeOf(const BoundaryFeatures& features) {
    for (std::size_t i = 0; i < features.size(); ++i) {
        if (features.shape(i) != MapShape::Polygon) {
            return wkbUnknown;
        }
    }
    return wkbPolygon;
}

} // namespace

BoundaryLayer::BoundaryLayer(const std::string& name,
                             std::unique_ptr<const BoundaryFeatures> features,
                             const OGRSpatialReference* system)
    : features_(std::move(features)), definition_(makeDefinition(name.c_str())) {
    SetDescription(name.c_str());
    definition_->SetGeomType(typeOf(*features_));
    if (system != nullptr) {
        const std::unique_ptr<OGRSpatialReference, Releaser> shared(system->Clone());
        definition_->GetGeomFieldDefn(0)->SetSpatialRef(shared.get());
    }
    for (const char* const field : {"id", "group"}) {
        OGRFieldDefn definition(field, OFTInteger);
        definition_->AddFieldDefn(&definition);
    }
}

OGRFeature* BoundaryLayer::GetNextRawFeature() {
    return next_ < features_->size() ? makeFeature(next_++) : nullptr;
}

OGRFeature* BoundaryLayer::GetFeature(GIntBig number) {
    return number >= 1 && number <= static_cast<GIntBig>(features_->size())
               ? makeFeature(static_cast<std::size_t>(number - 1))
               : nullptr;
}

OGRFeature* BoundaryLayer::makeFeature(std::size_t position) const {
    auto feature = std::make_unique<OGRFeature>(definition_.get());
    feature->SetFID(static_cast<GIntBig>(position) + 1);
    feature->SetField(idField, features_->id(position));
    feature->SetField(groupField, features_->group(position));
    if (auto geometry = geometryOf(features_->shape(position), features_->positions(position))) {
        geometry->assignSpatialReference(definition_->GetGeomFieldDefn(0)->GetSpatialRef());
        feature->SetGeometryDirectly(geometry.release());
    }
    return feature.release();
}

GIntBig BoundaryLayer::GetFeatureCount(int force) {
    return hasFilter() ? OGRLayer::GetFeatureCount(force) : static_cast<GIntBig>(features_->size());
}

int BoundaryLayer::TestCapability(const char* capability) VELDTRIM_GDAL_CONST {
    return static_cast<int>(EQUAL(capability, OLCRandomRead) ||
                            (EQUAL(capability, OLCFastFeatureCount) && !hasFilter()));
}

} // namespace veldtrim
