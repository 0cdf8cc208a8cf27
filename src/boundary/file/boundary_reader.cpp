#include "boundary/file/boundary_reader.h"

#include "boundary/file/boundary_walk.h"
#include "status/console.h"

#include <pulsenote.h>

namespace veldtrim {

namespace {

/// Traces the walk on standard output and sends its failure as an ErrorMessage.
class ConsoleTrace : public BoundarySink {
public:
    explicit ConsoleTrace(const std::string& path) : path_(path) {}

    void onTavelDgm() override { writeConsoleLine("Found TavelDGM"); }

    void onGroup(std::string_view type, bool isRead) override {
        const std::string text(type);
        writeConsoleLine("found group element");
        writeConsoleLine("typestring = " + text);
        if (!isRead) {
            writeConsoleLine("Unknown tag " + text);
            writeConsoleText("Ignoring block"); // the next text continues this line
        }
    }

    void onPolygon(std::int32_t id) override {
        writeConsoleLine("current polygon id = " + std::to_string(id) + " with type = 0");
    }

    void onPolygonRead(std::size_t points) override {
        writeConsoleLine(" ipts= " + std::to_string(points) + " points read for the boundary");
    }

    void onFault(const BoundaryFault& fault) override {
        switch (fault.kind) {
        case BoundaryFault::Kind::NotLoaded: {
            const std::string text = "Boundary file named " + path_ + " not found";
            writeConsoleLine(text);
            return send(text);
        }
        case BoundaryFault::Kind::NoTavelDgm:
            return send("Could not find the TavelDGM tag in the boundary file " + path_ + "\n");
        case BoundaryFault::Kind::PolygonId:
            return send("Cannot find the id of a polygon in a group of type ");
        case BoundaryFault::Kind::Point: {
            const std::string text = "cannot read point " + std::to_string(fault.point) +
                                     " in polygon " + std::to_string(fault.polygonId);
            writeConsoleLine(text);
            return send(text + "\n");
        }
        }
    }

private:
    static void send(const std::string& text) {
        constexpr int readerErrorCode = 1;
        ErrorMessage(readerErrorCode, text);
    }

    const std::string& path_;
};

} // namespace

bool readin_b_XML(std::string boundaryFilePath, BoundaryModel& model) {
    writeConsoleLine("[readin_b_XML:]");
    ConsoleTrace trace(boundaryFilePath);
    if (!walkBoundaryFile(boundaryFilePath, model, trace)) {
        return false;
    }
    writeConsoleLine("     ... finished");
    return true;
}

} // namespace veldtrim
