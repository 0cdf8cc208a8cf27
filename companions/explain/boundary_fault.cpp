#include "explain/boundary_fault.h"

#include "explain/content_kind.h"
#include "explain/wording.h"
#include "text/line_reader.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>
#include <vector>

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

/// `shown` is the text at that place, in quotes and with a colon, or nothing.
std::string describeParseError(std::string_view error, std::int32_t line, std::int32_t column,
                               const std::string& shown) {
    const std::string place = "line " + std::to_string(line) + ", column " + std::to_string(column);
    if (error == "Element tag not found") {
        return "is not complete: the element that begins at " + place + " has no end tag";
    }
    return "is broken XML at " + place + ": " + shown + expectedBy(error);
}

std::string describeParseError(const CMarkupSTL& document, const std::string& path) {
    const std::string& error = document.getParseError();
    const std::int32_t line = document.getParseErrorLine();
    const std::int32_t column = document.getParseErrorColumn();
    return describeParseError(error, line, column, quoted(textAt(path, line, column)) + ": ");
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
std::string rootOf(const CMarkupSTL& document) {
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
    const std::string root = rootOf(document);
    document.resetPosition();
    const std::string children = listChildren(document);
    return "has no element TavelDGM below its root element: the root element " + root +
           (children.empty() ? " contains no element" : " contains " + children);
}

/// Describes what is wrong with the faulty attribute, which should be `kind`.
std::string describeAttribute(const BoundaryFault& fault, const char* kind) {
    const std::string name = fault.attribute;
    return fault.value.empty()
               ? " has no " + name
               : " has " + name + '=' + quoted(fault.value) + ", which is not " + kind;
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

std::string describeFault(const BoundaryFault& fault) {
    switch (fault.kind) {
    case BoundaryFault::Kind::NotLoaded:
        return fault.parseError.empty()
                   ? "holds no XML"
                   : describeParseError(fault.parseError, fault.line, fault.column, "");
    case BoundaryFault::Kind::NoTavelDgm:
        return "has no element TavelDGM below its root element";
    case BoundaryFault::Kind::PolygonId:
        return "cannot be read: its polygon number " + std::to_string(fault.polygon + 1) +
               describeAttribute(fault, "an integer");
    case BoundaryFault::Kind::Point:
        break;
    }
    const bool isInteger = std::string_view(fault.attribute) == "segmenttype";
    return "cannot be read: point number " + std::to_string(fault.point + 1) + " of polygon " +
           std::to_string(fault.polygonId) +
           describeAttribute(fault, isInteger ? "an integer" : "a number");
}

std::string describeFault(const BoundaryFault& fault, const std::string& path) {
    const bool isUnloaded = fault.kind == BoundaryFault::Kind::NotLoaded ||
                            fault.kind == BoundaryFault::Kind::NoTavelDgm;
    return isUnloaded ? describeUnloaded(path) : describeFault(fault);
}

std::string nameOfRoot(const std::string& path) {
    CMarkupSTL document;
    return document.loadFile(path.c_str()) ? rootOf(document) : std::string();
}

} // namespace veldtrim
