#include "gdal/new_layer.h"

#include "area/degrees.h"
#include "area/feature_refusal.h"
#include "explain/wording.h"
#include "gdal/geometry.h"
#include "gdal/messages.h"

#include <exception>
#include <optional>
#include <utility>

namespace veldtrim {

namespace {

/// Returns the 32-bit integer that the field holds, if it holds one.
std::optional<std::int32_t> idIn(const OGRFeature& feature, int field) {
    switch (feature.GetFieldDefnRef(field)->GetType()) {
    case OFTInteger:
        return feature.GetFieldAsInteger(field);
    case OFTInteger64:
        return integerId(std::to_string(feature.GetFieldAsInteger64(field)));
    case OFTReal:
        return integerId(feature.GetFieldAsDouble(field));
    case OFTString:
        return integerId(std::string_view(feature.GetFieldAsString(field)));
    default:
        return std::nullopt;
    }
}

} // namespace

NewLayer::NewLayer(const char* name, Target& target, NewLayerOptions options)
    : definition_(makeDefinition(name)), options_(std::move(options)), target_(target),
      writer_([&target](std::string_view text) { target.write(text); }),
      area_(writer_, {options_.bridgeHoles, "the creation option HOLES=BRIDGE"}),
      errorsBefore_(CPLGetErrorCounter()) {
    SetDescription(name);
}

OGRErr NewLayer::ICreateFeature(OGRFeature* feature) {
    if (isBroken_) {
        return OGRERR_FAILURE;
    }
    try {
        add(*feature);
        return OGRERR_NONE;
    } catch (const FeatureRefusal& refusal) {
        ++refused_;
        reportError(target_.name() + ": " + refusal.what());
    } catch (const std::exception& error) {
        isBroken_ = true;
        reportError(error.what());
    }
    return OGRERR_FAILURE;
}

void NewLayer::add(const OGRFeature& feature) {
    const std::string name = "feature number " + std::to_string(++features_);
    area_.addFeature(name, idOf(feature, name), polygonsOf(name, feature.GetGeometryRef()));
}

std::int32_t NewLayer::idOf(const OGRFeature& feature, const std::string& name) const {
    const int field = definition_->GetFieldIndex(nameOfIdField());
    if (field >= 0 && feature.IsFieldSetAndNotNull(field)) {
        const std::optional<std::int32_t> id = idIn(feature, field);
        if (!id) {
            refuseId(name, quoted(feature.GetFieldAsString(field)));
        }
        return *id;
    }
    if (!options_.idField.empty()) {
        throw FeatureRefusal(name, "has no id in the field " + quoted(options_.idField));
    }
    return features_;
}

const char* NewLayer::nameOfIdField() const {
    return options_.idField.empty() ? "id" : options_.idField.c_str();
}

OGRErr NewLayer::CreateField(FieldToCreate field, int /*isApproximationAllowed*/) {
    const char* const name = field->GetNameRef();
    // The field of a boundary file that was read: all polygons are in one group now.
    const bool isKnown = EQUAL(name, nameOfIdField()) || EQUAL(name, "group");
    if (!isKnown && !hasWarned_) {
        hasWarned_ = true;
        reportWarning(target_.name() + ": the field " + name +
                      " is not written: a boundary file holds no fields but the ids");
    }
    definition_->AddFieldDefn(field);
    return OGRERR_NONE;
}

int NewLayer::TestCapability(const char* capability) VELDTRIM_GDAL_CONST {
    return static_cast<int>(EQUAL(capability, OLCSequentialWrite) ||
                            EQUAL(capability, OLCCreateField));
}

std::string NewLayer::whyUnwritten() const {
    if (refused_ > 0) {
        return std::to_string(refused_) + " of " + std::to_string(features_) +
               " features cannot be part of a boundary file";
    }
    // The program reads from a broken source, for example, and has closed the new file early.
    if (isBroken_ ||
        (CPLGetLastErrorType() == CE_Failure && CPLGetErrorCounter() != errorsBefore_)) {
        return "an error came before its end";
    }
    return area_.totals().polygons == 0 ? "it would hold no polygon" : "";
}

void NewLayer::complete() {
    writer_.finish();
    target_.publish();
    if (const std::size_t slanted = area_.totals().slantedBridges; slanted > 0) {
        reportWarning(target_.name() + ": " + std::to_string(slanted) + " of " +
                      std::to_string(area_.totals().holes) +
                      " bridges to holes are slanted: points exactly on them may be dropped");
    }
    // GeoPackage has a geographic system for layers without a system, so the numbers decide, too.
    if (options_.isGeographic && canBeDegrees(area_.totals().bounds)) {
        reportWarning(target_.name() + ": the coordinates are degrees, but the scans are probably "
                                       "in metres: -t_srs transforms to their coordinate system");
    }
}

bool NewLayer::publish() {
    if (const std::string reason = whyUnwritten(); !reason.empty()) {
        reportError(target_.name() + " was not written: " + reason);
        return false;
    }
    try {
        complete();
        return true;
    } catch (const std::exception& error) {
        reportError(error.what());
        return false;
    }
}

} // namespace veldtrim
