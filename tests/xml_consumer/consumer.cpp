#include <veldtrim/cmarkup_stl.h>
#include <veldtrim/xml_reader.h>

#include <cstdint>
#include <iostream>
#include <string>
#include <vector>

namespace {

/// Calls the protected operation of the library's class.
class Reader : public veldtrim::XMLReader {
public:
    [[nodiscard]] bool has(const std::string& path) const { return traversePath(path); }
};

bool answersQueries(const Reader& reader) {
    std::int32_t id = 0;
    double scale = 0;
    std::string name;
    std::vector<std::string> parts;
    return reader.has("area") && reader.getInt("area/@id", id) && id == 7 &&
           reader.getDouble("area/scale", scale) && scale == 0.25 &&
           reader.getString("area/name", name) && name == "Jacksboro" &&
           reader.getItemsBelow("area/parts", parts, "") &&
           parts == std::vector<std::string>{"north", "south"};
}

bool walksDocuments(const std::string& text) {
    veldtrim::CMarkupSTL document;
    veldtrim::CMarkupSTL broken;
    return document.setDocument(text.c_str()) &&
           veldtrim::XMLReader::traversePath("north", &document) &&
           document.getElementMarkup() == "<north>1</north>" && !broken.setDocument("<a></b>") &&
           broken.getParseError() == "End tag does not correspond to a";
}

} // namespace

int main(int argc, char** argv) {
    const std::string path = argc > 1 ? argv[1] : "";
    Reader reader;
    if (!veldtrim::XMLReader::checkFile(path) || !reader.setFile(path)) {
        std::cout << "cannot read " << path << std::endl;
        return 2;
    }
    return answersQueries(reader) && walksDocuments(reader.getSubDocument("area/parts")) ? 0 : 1;
}
