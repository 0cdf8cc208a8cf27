#include <veldtrim/cmarkup_stl.h>
#include <veldtrim/xml_reader.h>

#include <cstdint>
#include <string>
#include <vector>

namespace {

/// Calls the protected operation of the library's class.
class Reader : public veldtrim::XMLReader {
public:
    [[nodiscard]] bool has(const std::string& path) const { return traversePath(path); }
};

bool works(const std::string& path) {
    Reader reader;
    std::int32_t id = 0;
    double scale = 0;
    std::string name;
    std::vector<std::string> parts;
    veldtrim::CMarkupSTL document;
    veldtrim::CMarkupSTL broken;
    return veldtrim::XMLReader::checkFile(path) && reader.setFile(path) && reader.has("area") &&
           reader.getInt("area/@id", id) && id == 7 && reader.getDouble("area/scale", scale) &&
           scale == 0.25 && reader.getString("area/name", name) && name == "Jacksboro" &&
           reader.getItemsBelow("area/parts", parts, "") &&
           parts == std::vector<std::string>{"north", "south"} &&
           document.setDocument(reader.getSubDocument("area/parts").c_str()) &&
           veldtrim::XMLReader::traversePath("north", &document) &&
           document.getElementMarkup() == "<north>1</north>" && !broken.setDocument("<a></b>") &&
           broken.getParseError() == "End tag does not correspond to a";
}

} // namespace

int main(int argc, char** argv) {
    return argc == 2 && works(argv[1]) ? 0 : 1;
}
