/// Collects what an inspection needs while the boundary file is read.
#pragma once

#include "boundary/file/boundary_walk.h"

#include <cstdint>
#include <string>
#include <vector>

namespace veldtrim {

/// Collects what the model does not store: the ids of the polygons, the types of the groups,
/// decimal commas, and the failure, if any.
class BoundaryContents : public BoundarySink {
public:
    /// `path` is the path of the boundary file.
    explicit BoundaryContents(std::string path) : path_(std::move(path)) {}

    void onGroup(std::string_view type, bool isRead) override;
    void onPolygon(std::int32_t id) override { polygonIds_.push_back(id); }
    void onPoint(const CMarkupSTL& document) override;
    void onFault(const BoundaryFault& fault) override;

    /// The ids in document order. After success, there is one for each polygon of the model.
    [[nodiscard]] const std::vector<std::int32_t>& polygonIds() const { return polygonIds_; }

    /// The first few types of groups, each once.
    [[nodiscard]] const std::vector<std::string>& groupTypes() const { return groupTypes_; }

    /// Whether there is a group whose polygons are read.
    [[nodiscard]] bool hasBoundaries() const { return hasBoundaries_; }

    /// The first coordinate with a decimal comma; empty if there is none.
    [[nodiscard]] const std::string& decimalComma() const { return decimalComma_; }

    /// Why the file cannot be read, as a sentence without a full stop; empty if it can.
    [[nodiscard]] const std::string& failure() const { return failure_; }

    /// What to do about the failure; may be empty.
    [[nodiscard]] const std::string& advice() const { return advice_; }

private:
    std::string path_;
    std::vector<std::int32_t> polygonIds_;
    std::vector<std::string> groupTypes_;
    bool hasBoundaries_ = false;
    std::string decimalComma_;
    std::string failure_;
    std::string advice_;
};

} // namespace veldtrim
