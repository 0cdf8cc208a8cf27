/// What a file holds, by its first bytes.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace veldtrim {

enum class ContentKind : std::uint8_t {
    Unreadable, ///< cannot be opened
    Empty,
    Text,    ///< anything without NUL bytes that is none of the following
    TextBom, ///< UTF-8 behind a byte-order mark
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

/// The beginning of the file at `path`, up to 4 KiB; empty if the file cannot be read.
std::string readStart(const std::string& path);

/// The kind of the regular file at `path`. The names of files decide only where their bytes do not.
ContentKind contentKind(const std::string& path);

/// What the content is in words, such as "a GeoJSON file"; empty for text and XML.
std::string_view nameOf(ContentKind kind);

} // namespace veldtrim
