#include "boundary/file/boundary_walk.h"

#include "boundary/file/attribute_numbers.h"

#include <veldtrim/cmarkup_stl.h>
#include <veldtrim/xml_reader.h>

namespace veldtrim {

namespace {

/// Copies the polygons of a loaded document into the model.
class Walk {
public:
    Walk(CMarkupSTL& document, BoundaryModel& model, BoundarySink& sink)
        : document_(document), model_(model), sink_(sink), reals_(document), integers_(document) {}

    /// Reads all groups below the main position, which must be the element TavelDGM.
    bool readGroups() {
        while (document_.findChildElement("group")) {
            const std::string type = document_.getChildAttribute("type");
            const bool isRead = type == "boundaries";
            sink_.onGroup(type, isRead);
            if (isRead) {
                document_.intoElement();
                if (!readPolygons()) {
                    return false;
                }
                document_.outOfElement();
            }
        }
        return true;
    }

private:
    bool readPolygons() {
        while (document_.findChildElement("polygon")) {
            if (!readAttribute(integers_, "id", fault_.polygonId)) {
                return fail(BoundaryFault::Kind::PolygonId);
            }
            sink_.onPolygon(fault_.polygonId);
            document_.intoElement();
            BoundaryPolygon polygon;
            if (!readPoints(polygon)) {
                fault_.point = polygon.vertexIndices.size();
                return fail(BoundaryFault::Kind::Point);
            }
            document_.outOfElement();
            polygon.computeBounds(model_.vertices());
            model_.addPolygon(polygon);
            sink_.onPolygonRead(polygon.vertexIndices.size());
            ++fault_.polygon;
        }
        return true;
    }

    bool readPoints(BoundaryPolygon& polygon) {
        while (document_.findChildElement("point")) {
            BoundaryVertex vertex;
            std::int32_t segmentType = 0; // must be an integer, but is not used
            if (!readAttribute(reals_, "x", vertex.x) || !readAttribute(reals_, "y", vertex.y) ||
                !readAttribute(integers_, "segmenttype", segmentType)) {
                return false;
            }
            polygon.vertexIndices.push_back(model_.addVertex(vertex));
            sink_.onPoint(document_);
        }
        return true;
    }

    /// Reads an attribute of the child position. Records it in `fault_` if it cannot be read.
    template <typename Number>
    bool readAttribute(AttributeNumbers<Number>& numbers, const char* name, Number& value) {
        if (numbers.read(name, value)) {
            return true;
        }
        fault_.attribute = name;
        fault_.value = document_.getChildAttributeSource(name);
        return false;
    }

    bool fail(BoundaryFault::Kind kind) {
        fault_.kind = kind;
        sink_.onFault(fault_);
        return false;
    }

    CMarkupSTL& document_;
    BoundaryModel& model_;
    BoundarySink& sink_;
    AttributeNumbers<double> reals_;
    AttributeNumbers<std::int32_t> integers_;
    BoundaryFault fault_; ///< the current position, for reporting a failure
};

/// Walks through the document, which `isLoaded` says to hold an element.
bool walk(CMarkupSTL& document, bool isLoaded, BoundaryModel& model, BoundarySink& sink) {
    BoundaryFault fault;
    if (!isLoaded) {
        fault.kind = BoundaryFault::Kind::NotLoaded;
        fault.parseError = document.getParseError();
        fault.line = document.getParseErrorLine();
        fault.column = document.getParseErrorColumn();
        sink.onFault(fault);
        return false;
    }
    document.resetPosition();
    if (!XMLReader::traversePath("TavelDGM", &document)) {
        fault.kind = BoundaryFault::Kind::NoTavelDgm;
        sink.onFault(fault);
        return false;
    }
    sink.onTavelDgm();
    return Walk(document, model, sink).readGroups();
}

} // namespace

bool walkBoundaryFile(const std::string& path, BoundaryModel& model, BoundarySink& sink) {
    CMarkupSTL document;
    return walk(document, XMLReader::setFile(path, &document), model, sink);
}

bool walkBoundaryText(const std::string& text, BoundaryModel& model, BoundarySink& sink) {
    CMarkupSTL document;
    // A document without a root element has no child TavelDGM either.
    return walk(document, document.setDocument(text.c_str()), model, sink);
}

} // namespace veldtrim
