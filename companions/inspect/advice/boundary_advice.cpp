#include "inspect/advice/boundary_advice.h"

#include "explain/boundary_fault.h"
#include "explain/content_kind.h"
#include "explain/shell_command.h"
#include "explain/wording.h"

#include <algorithm>
#include <cctype>
#include <string_view>

#include <boost/filesystem/operations.hpp>

namespace veldtrim {

namespace {

namespace fs = boost::filesystem;

/// Returns whether opening the file cannot block, as opening a named pipe does.
bool canBeOpened(const std::string& path) {
    boost::system::error_code error;
    const fs::file_status status = fs::status(path, error);
    return fs::is_regular_file(status) || !fs::exists(status);
}

/// Returns what to do about a file that holds no boundaries in XML.
std::string adviceOnOtherFormat(ContentKind kind, const std::string& path) {
    if (kind == ContentKind::GeoJson) {
        return "make a boundary file of it, and name that one: " +
               commandFor("veldtrim-boundary import {} NEWFILE", path);
    }
    const std::string command = commandToGeoJson(kind, path);
    return command.empty()
               ? "write its polygons as XML in the form that the page on file formats shows"
               : "save its polygons as GeoJSON in the coordinate system of the points, and make a "
                 "boundary file of that with veldtrim-boundary import: " +
                     command;
}

std::string adviceOnUnloaded(const std::string& path) {
    const ContentKind kind = contentKind(path);
    switch (kind) {
    case ContentKind::Gzip:
    case ContentKind::Zip:
        return "unpack it: " + commandToText(kind, path);
    case ContentKind::Utf16:
        return "convert it: " + commandToText(kind, path);
    case ContentKind::Unreadable:
        return fs::exists(path)
                   ? "give yourself the permission to read it: " + commandFor("chmod u+r {}", path)
                   : "check the path; it begins at the current directory";
    case ContentKind::Empty:
        return "copy or export it again";
    case ContentKind::Xml:
    case ContentKind::TextBom:
        return "mend the XML at this place, or export the file again";
    default:
        return adviceOnOtherFormat(kind, path);
    }
}

std::string adviceOnRoot(const std::string& path) {
    if (nameOfRoot(path) == "TavelDGM") {
        return "TavelDGM must be a child of the root element, whatever the name of the root. Put "
               "an element around it: " +
               commandFor("sed -i 's|<TavelDGM|<project>&|; s|</TavelDGM>|&</project>|' {}", path);
    }
    const ContentKind kind = contentKind(path);
    if (kind == ContentKind::Kml || kind == ContentKind::Gml) {
        return adviceOnOtherFormat(kind, path);
    }
    return "the form is <project><TavelDGM><group type=\"boundaries\">, then a polygon for each "
           "ring";
}

/// Returns a colon and the command that makes the groups of this type ones of boundaries. A type is
/// any text: returns nothing if the shell or sed could take it for something else.
std::string commandToRename(const std::string& type, const std::string& path) {
    const bool isPlain =
        !type.empty() && std::all_of(type.begin(), type.end(), [](unsigned char c) {
            return std::isalnum(c) != 0 || c == '_' || c == '-' || c == ' ';
        });
    return isPlain
               ? ": " + commandFor("sed -i 's/type=\"" + type + "\"/type=\"boundaries\"/' {}", path)
               : std::string();
}

} // namespace

std::string adviceOnFault(const BoundaryFault& fault, const std::string& path) {
    switch (fault.kind) {
    case BoundaryFault::Kind::NotLoaded:
        return canBeOpened(path) ? adviceOnUnloaded(path) : "";
    case BoundaryFault::Kind::NoTavelDgm:
        return adviceOnRoot(path);
    case BoundaryFault::Kind::PolygonId:
        return "each polygon needs an integer in quotes as its id: <polygon id=\"1\">";
    case BoundaryFault::Kind::Point:
        break;
    }
    if (fault.value.empty() && std::string_view(fault.attribute) == "segmenttype") {
        return "each point needs a segmenttype, in quotes. If none has one, add it: " +
               commandFor("sed -i 's/<point /<point segmenttype=\"0\" /g' {}", path);
    }
    return "each point needs numbers in quotes: <point x=\"1.5\" y=\"2\" segmenttype=\"0\"/>";
}

std::vector<std::string> adviceOnContents(const BoundaryContents& contents, std::size_t polygons,
                                          const std::string& path) {
    std::vector<std::string> advice;
    if (!contents.decimalComma().empty()) {
        const std::string& value = contents.decimalComma();
        advice.push_back(
            "the boundary file has decimal commas, which end a number: " + quoted(value) +
            " is read as " + value.substr(0, value.find(',')) + ". Write decimal points: " +
            commandFor("sed -i -E 's/([0-9]),([0-9])/\\1.\\2/g' {}", path));
    }
    if (polygons > 0) {
        return advice;
    }
    if (contents.groupTypes().empty()) {
        advice.emplace_back("the boundary file has no group in its element TavelDGM: polygons "
                            "belong in <group type=\"boundaries\">");
    } else if (contents.hasBoundaries()) {
        advice.emplace_back("the groups of type \"boundaries\" in the boundary file hold no "
                            "polygon");
    } else {
        std::string types;
        for (const std::string& type : contents.groupTypes()) {
            types += (types.empty() ? "" : ", ") + quoted(type);
        }
        advice.push_back("the boundary file has no group of type \"boundaries\", the only type "
                         "that a run reads; it has " +
                         types + ". If that holds the boundaries, rename it" +
                         commandToRename(contents.groupTypes().front(), path));
    }
    return advice;
}

} // namespace veldtrim
