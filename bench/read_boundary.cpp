// Reads one boundary file into memory, with the program's reader or with pugixml. One read per
// process, so that neither finds memory that the other has left.

#include "boundary/file/boundary_reader.h"

#include <pugixml.hpp>

#include <cstddef>
#include <iostream>
#include <string>
#include <string_view>
#include <vector>

namespace {

std::size_t readIntoModel(const std::string& path) {
    veldtrim::BoundaryModel model;
    return veldtrim::readin_b_XML(path, model) ? model.vertices().size() : 0;
}

std::size_t readWithPugixml(const std::string& path) {
    pugi::xml_document document;
    if (!document.load_file(path.c_str())) {
        return 0;
    }
    std::vector<veldtrim::BoundaryVertex> vertices;
    for (const pugi::xml_node group : document.first_child().child("TavelDGM").children("group")) {
        for (const pugi::xml_node polygon : group.children("polygon")) {
            for (const pugi::xml_node point : polygon.children("point")) {
                vertices.push_back(
                    {point.attribute("x").as_double(), point.attribute("y").as_double()});
            }
        }
    }
    return vertices.size();
}

} // namespace

int main(int argc, char* argv[]) {
    if (argc != 3) {
        std::cerr << "Usage: read_boundary veldtrim|pugixml FILE\n";
        return 2;
    }
    const bool own = std::string_view(argv[1]) == "veldtrim";
    const std::size_t points = own ? readIntoModel(argv[2]) : readWithPugixml(argv[2]);
    std::cerr << points << " points\n";
    return points > 0 ? 0 : 1;
}
