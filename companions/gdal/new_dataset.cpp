#include "gdal/new_dataset.h"

#include "gdal/messages.h"

#include <exception>
#include <system_error>
#include <utility>

namespace veldtrim {

namespace {

/// Returns `options` as the list changes them; none, after it has reported an error, if the list
/// has a value that does not exist.
std::optional<NewLayerOptions> changedBy(CSLConstList list, NewLayerOptions options) {
    if (const char* const holes = CSLFetchNameValue(list, "HOLES")) {
        options.bridgeHoles = EQUAL(holes, "BRIDGE");
        if (!options.bridgeHoles && !EQUAL(holes, "REFUSE")) {
            reportError("HOLES=" + std::string(holes) + " does not exist: use REFUSE or BRIDGE");
            return std::nullopt;
        }
    }
    options.idField = CSLFetchNameValueDef(list, "ID_FIELD", options.idField.c_str());
    return options;
}

} // namespace

std::unique_ptr<NewDataset> NewDataset::create(const char* name, CSLConstList options) {
    std::optional<NewLayerOptions> layerOptions = changedBy(options, {});
    if (!layerOptions) {
        return nullptr;
    }
    try {
        return std::make_unique<NewDataset>(name, std::move(*layerOptions));
    } catch (const std::system_error& error) {
        reportError(std::string(error.what()) +
                    (error.code() == std::errc::file_exists
                         ? ". Boundary files are never replaced or changed: write to another name, "
                           "or remove the file first"
                         : ""));
        return nullptr;
    }
}

NewDataset::NewDataset(const char* name, NewLayerOptions options)
    : options_(std::move(options)), target_(name) {}

NewDataset::~NewDataset() {
    if (hasRefusedLayer_) {
        reportError(target_.name() + " was not written: a layer cannot be part of it");
    } else if (layer_) {
        layer_->publish();
    }
}

OGRLayer* NewDataset::addLayer(const char* name, const OGRSpatialReference* system,
                               CSLConstList options) {
    if (layer_) {
        hasRefusedLayer_ = true;
        reportError(target_.name() + " has one layer only: name the layer to write, here " +
                    layer_->GetName() + " or " + name);
        return nullptr;
    }
    std::optional<NewLayerOptions> layerOptions = changedBy(options, options_);
    if (!layerOptions) {
        hasRefusedLayer_ = true;
        return nullptr;
    }
    layerOptions->isGeographic = system != nullptr && system->IsGeographic() != 0;
    layer_ = std::make_unique<NewLayer>(name, target_, std::move(*layerOptions));
    return layer_.get();
}

} // namespace veldtrim
