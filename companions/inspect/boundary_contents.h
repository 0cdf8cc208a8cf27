/// What an inspection notes while the boundary file is read.
#pragma once

#include "boundary/file/boundary_walk.h"

#include <cstdint>
#include <string>
#include <vector>

namespace veldtrim {

/// Collects the ids of the polygons, which the model does not hold, and the failure.
class BoundaryContents : public BoundarySink {
public:
    /// `path` names the boundary file in the failure's text.
    explicit BoundaryContents(std::string path) : path_(std::move(path)) {}

    void onPolygon(std::int32_t id) override { polygonIds_.push_back(id); }
    void onFault(const BoundaryFault& fault) override;

    /// The ids in document order; on success one for each polygon of the model.
    [[nodiscard]] const std::vector<std::int32_t>& polygonIds() const { return polygonIds_; }

    /// A sentence on why the file cannot be read, without a full stop; empty when it can.
    [[nodiscard]] const std::string& failure() const { return failure_; }

private:
    std::string path_;
    std::vector<std::int32_t> polygonIds_;
    std::string failure_;
};

} // namespace veldtrim
