#include "inspect/advice/boundary_advice.h"

#include "inspect/advice/content_kind.h"
#include "inspect/advice/shell_command.h"
#include "inspect/wording.h"
#include "text/line_reader.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <string_view>
#include <utility>

#include <veldtrim/cmarkup_stl.h>

#include <boost/filesystem/operations.hpp>

namespace veldtrim {

namespace {

namespace fs = boost::filesystem;

/// Explains an error of the parser, which it recognises by its beginning.
std::string expectedBy(std::string_view parseError) {
    constexpr std::array<std::pair<std::string_view, std::string_view>, 6> expected{{
        {"Abrupt end within tag", "a tag begins here, and the file ends within it"},
        {"Tag starts with quote", "a \"<\" is followed by a quote; in text, write &lt; for \"<\""},
        {"Invalid node", "the comment, declaration or CDATA section that begins here does not end"},
        {"End of tag not found", "the tag that begins here has no \">\""},
        {"End tag does not correspond to ", "this end tag does not close the innermost element"},
        {"End tag not completed for element ", "the end tag that begins here has no \">\""},
    }};
    const auto* const found = std::find_if(expected.begin(), expected.end(), [&](const auto& each) {
        return parseError.starts_with(each.first);
    });
    if (found == expected.end()) {
        return printable(parseError);
    }
    const std::string element(parseError.substr(found->first.size()));
    return std::string(found->second) + (element.empty() ? "" : ", " + printable(element));
}

/// The text of the file from its `line` and `column` on, as far as the line goes.
std::string textAt(const std::string& path, std::int32_t line, std::int32_t column) {
    LineReader lines(path);
    Line text;
    for (std::int32_t i = 0; i < line; ++i) {
        lines.next(text);
    }
    return std::string(text.text.substr(
        std::min(static_cast<std::size_t>(std::max(column, 1) - 1), text.text.size())));
}

std::string describeParseError(const CMarkupSTL& document, const std::string& path) {
    const std::string& error = document.getParseError();
    const std::string place = "line " + std::to_string(document.getParseErrorLine()) + ", column " +
                              std::to_string(document.getParseErrorColumn());
    if (error == "Element tag not found") {
        return "is not complete: the element that begins at " + place + " has no end tag";
    }
    return "is broken XML at " + place + ": " +
           quoted(textAt(path, document.getParseErrorLine(), document.getParseErrorColumn())) +
           ": " + expectedBy(error);
}

/// Returns the names of the first few children of the root element, each name once.
std::string listChildren(CMarkupSTL& document) {
    std::vector<std::string> names;
    constexpr std::size_t mostNames = 8;
    while (names.size() < mostNames && document.findChildElement(nullptr)) {
        const std::string name = printable(document.getChildTagName());
        if (std::find(names.begin(), names.end(), name) == names.end()) {
            names.push_back(name);
        }
    }
    std::string list;
    for (const std::string& name : names) {
        list += (list.empty() ? "" : ", ") + name;
    }
    return list;
}

/// Returns the name of the root element.
std::string nameOfRoot(const CMarkupSTL& document) {
    const auto& elements = document.getElements();
    const ElementPosition& root = elements[static_cast<std::size_t>(elements[0].firstChild)];
    constexpr std::size_t longestName = 80;
    const std::string_view markup =
        std::string_view(document.getDocText())
            .substr(static_cast<std::size_t>(root.startLeft), longestName);
    const std::size_t start = std::min(markup.find_first_not_of("< \t\r\n"), markup.size());
    return printable(markup.substr(start, markup.find_first_of(" \t\r\n/>", start) - start));
}

std::string describeRoot(CMarkupSTL& document) {
    const std::string root = nameOfRoot(document);
    document.resetPosition();
    const std::string children = listChildren(document);
    return "has no element TavelDGM below its root element: the root element " + root +
           (children.empty() ? " contains no element" : " contains " + children);
}

/// Returns whether opening the file cannot block, as opening a named pipe does.
bool canBeOpened(const std::string& path) {
    boost::system::error_code error;
    const fs::file_status status = fs::status(path, error);
    return fs::is_regular_file(status) || !fs::exists(status);
}

bool isTavelDgmRoot(const std::string& path) {
    CMarkupSTL document;
    return document.loadFile(path.c_str()) && nameOfRoot(document) == "TavelDGM";
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
        return "write its polygons as XML in the form that the page on file formats shows";
    }
}

std::string adviceOnRoot(const std::string& path) {
    if (isTavelDgmRoot(path)) {
        return "TavelDGM must be a child of the root element, whatever the name of the root. Put "
               "an element around it: " +
               commandFor("sed -i 's|<TavelDGM|<project>&|; s|</TavelDGM>|&</project>|' {}", path);
    }
    const ContentKind kind = contentKind(path);
    if (kind == ContentKind::Kml || kind == ContentKind::Gml) {
        return "write its polygons as XML in the form that the page on file formats shows";
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

std::string describeUnloaded(const std::string& path) {
    boost::system::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (!fs::exists(status)) {
        return "does not exist";
    }
    if (!fs::is_regular_file(status)) {
        return fs::is_directory(status) ? "is a directory" : "is not a regular file";
    }
    const ContentKind kind = contentKind(path);
    if (kind == ContentKind::Unreadable) {
        return "cannot be read";
    }
    if (kind == ContentKind::Empty) {
        return "is empty";
    }
    if (kind == ContentKind::Text) {
        return "holds no XML";
    }
    if (const std::string_view name = nameOf(kind); !name.empty()) {
        return "is " + std::string(name) + ", not a boundary file";
    }
    CMarkupSTL document;
    return document.loadFile(path.c_str()) ? describeRoot(document)
                                           : describeParseError(document, path);
}

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
