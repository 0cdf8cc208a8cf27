#include "geojson/messages.h"

#include "explain/wording.h"
#include "geojson/place.h"

#include <iostream>

namespace veldtrim {

void tell(const std::string& message) {
    std::cerr << message << std::endl;
}

std::string nameOfSource(const std::string& argument) {
    return isStandardStream(argument) ? "standard input" : argument;
}

std::string nameOfTarget(const std::string& argument) {
    return isStandardStream(argument) ? "standard output" : argument;
}

std::string count(std::size_t number, const std::string& noun) {
    return grouped(static_cast<std::int64_t>(number)) + ' ' + noun + (number == 1 ? "" : "s");
}

std::string extent(std::size_t vertices, const BoundingBox& bounds) {
    const std::string number =
        grouped(static_cast<std::int64_t>(vertices)) + (vertices == 1 ? " vertex" : " vertices");
    return vertices == 0
               ? number
               : number + ", x from " + coordinate(bounds.xMin) + " to " + coordinate(bounds.xMax) +
                     ", y from " + coordinate(bounds.yMin) + " to " + coordinate(bounds.yMax);
}

} // namespace veldtrim
