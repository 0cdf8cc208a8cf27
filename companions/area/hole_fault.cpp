#include "area/hole_fault.h"

#include <array>
#include <charconv>

namespace veldtrim {

namespace {

std::string textOf(double value) {
    std::array<char, 32> text{};
    char* const end = std::to_chars(text.data(), text.data() + text.size(), value).ptr;
    return {text.data(), end};
}

} // namespace

std::string ringName(std::size_t ring) {
    return ring == 0 ? "the outer ring" : "hole " + std::to_string(ring);
}

HoleFault holeFaultNear(const std::string& fault, const BoundaryVertex& place) {
    return HoleFault{fault + " near (" + textOf(place.x) + ", " + textOf(place.y) +
                     "); repair its geometry, for example with \"Fix geometries\" of QGIS or with "
                     "ogr2ogr -makevalid"};
}

} // namespace veldtrim
