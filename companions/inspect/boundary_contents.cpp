#include "inspect/boundary_contents.h"

#include "inspect/advice/boundary_advice.h"
#include "inspect/wording.h"

#include <algorithm>

#include <veldtrim/cmarkup_stl.h>

namespace veldtrim {

namespace {

/// Describes what is wrong with the faulty attribute, which should be `kind`.
std::string describeAttribute(const BoundaryFault& fault, const char* kind) {
    const std::string name = fault.attribute;
    return fault.value.empty()
               ? " has no " + name
               : " has " + name + '=' + quoted(fault.value) + ", which is not " + kind;
}

std::string describeFault(const std::string& path, const BoundaryFault& fault) {
    switch (fault.kind) {
    case BoundaryFault::Kind::NotLoaded:
    case BoundaryFault::Kind::NoTavelDgm:
        return describeUnloaded(path);
    case BoundaryFault::Kind::PolygonId:
        return "cannot be read: its polygon number " + std::to_string(fault.polygon + 1) +
               describeAttribute(fault, "an integer");
    case BoundaryFault::Kind::Point:
        break;
    }
    const bool isInteger = std::string_view(fault.attribute) == "segmenttype";
    return "cannot be read: point number " + std::to_string(fault.point + 1) + " of polygon " +
           std::to_string(fault.polygonId) +
           describeAttribute(fault, isInteger ? "an integer" : "a number");
}

bool isDecimalComma(std::string_view value) {
    const std::size_t comma = value.find(',');
    const auto isDigit = [&](std::size_t at) {
        return at < value.size() && value[at] >= '0' && value[at] <= '9';
    };
    return comma != std::string_view::npos && comma > 0 && isDigit(comma - 1) && isDigit(comma + 1);
}

} // namespace

void BoundaryContents::onGroup(std::string_view type, bool isRead) {
    constexpr std::size_t mostTypes = 8;
    hasBoundaries_ = hasBoundaries_ || isRead;
    if (groupTypes_.size() < mostTypes &&
        std::find(groupTypes_.begin(), groupTypes_.end(), type) == groupTypes_.end()) {
        groupTypes_.emplace_back(type);
    }
}

void BoundaryContents::onPoint(const CMarkupSTL& document) {
    for (const char* const name : {"x", "y"}) {
        if (const std::string_view value = document.getChildAttributeSource(name);
            decimalComma_.empty() && isDecimalComma(value)) {
            decimalComma_ = value;
        }
    }
}

void BoundaryContents::onFault(const BoundaryFault& fault) {
    failure_ = "the boundary file " + path_ + ' ' + describeFault(path_, fault);
    advice_ = adviceOnFault(fault, path_);
}

} // namespace veldtrim
