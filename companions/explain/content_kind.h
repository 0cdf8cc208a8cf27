/// Recognises the kind of a file by its first bytes.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace veldtrim {

enum class ContentKind : std::uint8_t {
    Unreadable, ///< cannot be opened
    Empty,
    Text,    ///< no NUL bytes, and none of the following kinds
    TextBom, ///< UTF-8 after a byte-order mark
    Utf16,   ///< with or without a byte-order mark
    Gzip,
    Zip,
    Las, ///< LAS or LAZ
    Tiff,
    GeoPackage, ///< or another SQLite database
    Shapefile,  ///< .shp or .shx
    Dbase,      ///< .dbf
    Dxf,
    GeoJson,
    Kml,
    Gml,
    Xml, ///< XML of another kind
    Binary
};

/// Returns the first 4 KiB of the file at `path`; empty if the file cannot be read.
std::string readStart(const std::string& path);

/// Returns the kind of the regular file at `path`. Its name does not matter.
ContentKind contentKind(const std::string& path);

/// Returns a description of the kind, such as "a GeoJSON file". It is empty for text, XML, and
/// files that are empty or unreadable.
std::string_view nameOf(ContentKind kind);

/// Returns the command that replaces the file at `path` by the text that it packs or encodes; empty
/// for other kinds than Gzip, Zip and Utf16.
std::string commandToText(ContentKind kind, const std::string& path);

/// Returns the command that writes the polygons of the file at `path` to NEWFILE as GeoJSON; empty
/// unless it is a file of vector data of another kind.
std::string commandToGeoJson(ContentKind kind, const std::string& path);

} // namespace veldtrim
