#include "inspect/boundary_contents.h"

#include "explain/boundary_fault.h"
#include "inspect/advice/boundary_advice.h"

#include <algorithm>

#include <veldtrim/cmarkup_stl.h>

namespace veldtrim {

namespace {

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
    failure_ = "the boundary file " + path_ + ' ' + describeFault(fault, path_);
    advice_ = adviceOnFault(fault, path_);
}

} // namespace veldtrim
