/// Collects what an inspection needs while the boundary file is read.
#pragma once

#include "boundary/file/boundary_walk.h"

#include <cstdint>
#include <string>
#include <vector>

namespace veldtrim {

/// Collects the ids of the polygons, which the model does not store, and the failure, if any.
class BoundaryContents : public BoundarySink {
public:
    /// `path` is the name of the boundary file in the text of the failure.
    explicit BoundaryContents(std::string path) : path_(std::move(path)) {}

    void onPolygon(std::int32_t id) override { polygonIds_.push_back(id); }
    void onFault(const BoundaryFault& fault) override;

    /// The ids in document order. After success, there is one for each polygon of the model.
    [[nodiscard]] const std::vector<std::int32_t>& polygonIds() const { return polygonIds_; }

    /// Why the file cannot be read, as a sentence without a full stop; empty if it can.
    [[nodiscard]] const std::string& failure() const { return failure_; }

private:
    std::string path_;
    std::vector<std::int32_t> polygonIds_;
    std::string failure_;
};

} // namespace veldtrim
