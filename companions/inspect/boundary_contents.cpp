#include "inspect/boundary_contents.h"

#include "inspect/wording.h"

#include <boost/filesystem/operations.hpp>

namespace veldtrim {

namespace {

std::string describeLoading(const std::string& path, std::string_view parseError) {
    namespace fs = boost::filesystem;
    boost::system::error_code error;
    if (!fs::exists(path, error)) {
        return "does not exist";
    }
    if (!fs::is_regular_file(path, error)) {
        return "is not a regular file";
    }
    return "cannot be read" + (parseError.empty() ? "" : ": " + printable(parseError));
}

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
        return describeLoading(path, fault.parseError);
    case BoundaryFault::Kind::NoTavelDgm:
        return "has no element TavelDGM below its root element";
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

} // namespace

void BoundaryContents::onFault(const BoundaryFault& fault) {
    failure_ = "the boundary file " + path_ + ' ' + describeFault(path_, fault);
}

} // namespace veldtrim
