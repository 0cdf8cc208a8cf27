/// The definition of a layer: its name, its fields and its type of geometry.
#pragma once

#include <memory>

#include <ogr_feature.h>

namespace veldtrim {

/// Gives up a reference to an object of GDAL that counts them.
struct Releaser {
    template <typename Counted>
    void operator()(Counted* object) const {
        object->Release();
    }
};

/// A definition that lives until its layer and all features made from it are gone.
using LayerDefinition = std::unique_ptr<OGRFeatureDefn, Releaser>;

inline LayerDefinition makeDefinition(const char* name) {
    LayerDefinition definition(new OGRFeatureDefn(name));
    definition->Reference();
    return definition;
}

} // namespace veldtrim
