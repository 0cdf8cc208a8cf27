#include "boundary/file/boundary_reader.h"

#include "boundary/file/attribute_numbers.h"
#include "status/console.h"

#include <pulsenote.h>
#include <veldtrim/cmarkup_stl.h>
#include <veldtrim/xml_reader.h>

#include <utility>

namespace veldtrim {

namespace {

constexpr int readerErrorCode = 1;

/// One read of a boundary file, from its loaded document into the model.
class Reader {
public:
    Reader(CMarkupSTL& document, BoundaryModel& model)
        : document_(document), model_(model), reals_(document), integers_(document) {}

    /// Reads every group below the main position, the element TavelDGM.
    bool readGroups() {
        while (document_.findChildElement("group")) {
            writeConsoleLine("found group element");
            const std::string type = document_.getChildAttribute("type");
            writeConsoleLine("typestring = " + type);
            if (type == "boundaries") {
                document_.intoElement();
                if (!readPolygons()) {
                    return false;
                }
                document_.outOfElement();
            } else {
                writeConsoleLine("Unknown tag " + type);
                writeConsoleText("Ignoring block");
            }
        }
        return true;
    }

private:
    bool readPolygons() {
        while (document_.findChildElement("polygon")) {
            int id = 0;
            if (!integers_.read("id", id)) {
                ErrorMessage(readerErrorCode,
                             "Cannot find the id of a polygon in a group of type ");
                return false;
            }
            writeConsoleLine("current polygon id = " + std::to_string(id) + " with type = 0");
            document_.intoElement();
            BoundaryPolygon polygon;
            if (!readPoints(polygon, id)) {
                return false;
            }
            document_.outOfElement();
            writeConsoleLine(" ipts= " + std::to_string(polygon.vertexIndices.size()) +
                             " points read for the boundary");
            polygon.computeBounds(model_.vertices());
            model_.addPolygon(polygon);
        }
        return true;
    }

    bool readPoints(BoundaryPolygon& polygon, int id) {
        while (document_.findChildElement("point")) {
            BoundaryVertex vertex;
            int segmentType = 0; // must be there and a number; nothing uses its value
            if (!reals_.read("x", vertex.x) || !reals_.read("y", vertex.y) ||
                !integers_.read("segmenttype", segmentType)) {
                const std::string text = "cannot read point " +
                                         std::to_string(polygon.vertexIndices.size()) +
                                         " in polygon " + std::to_string(id);
                writeConsoleLine(text);
                ErrorMessage(readerErrorCode, text + "\n");
                return false;
            }
            polygon.vertexIndices.push_back(model_.addVertex(vertex));
        }
        return true;
    }

    CMarkupSTL& document_;
    BoundaryModel& model_;
    AttributeNumbers<double> reals_;
    AttributeNumbers<int> integers_;
};

} // namespace

bool readin_b_XML(std::string boundaryFilePath, BoundaryModel& model) {
    writeConsoleLine("[readin_b_XML:]");
    CMarkupSTL document;
    if (!XMLReader::setFile(boundaryFilePath, &document)) {
        const std::string text = "Boundary file named " + boundaryFilePath + " not found";
        writeConsoleLine(text);
        ErrorMessage(readerErrorCode, text);
        return false;
    }
    document.resetPosition();
    if (!XMLReader::traversePath("TavelDGM", &document)) {
        ErrorMessage(readerErrorCode, "Could not find the TavelDGM tag in the boundary file " +
                                          boundaryFilePath + "\n");
        return false;
    }
    writeConsoleLine("Found TavelDGM");
    if (!Reader(document, model).readGroups()) {
        return false;
    }
    writeConsoleLine("     ... finished");
    return true;
}

} // namespace veldtrim
