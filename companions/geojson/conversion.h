/// Converts between GeoJSON and boundary files.
#pragma once

#include <string>

namespace veldtrim {

/// What to convert: from `source` to `target`, each a path or "-" for the standard stream.
struct Conversion {
    std::string source;
    std::string target;
    bool bridgeHoles = false; ///< import: join holes to their outer ring; otherwise refuse them
    std::string idField;      ///< import: the property with the ids; empty for the usual ones
    bool countIds = false;    ///< import: the ids are the numbers of the features
    std::string crs;          ///< export: the coordinate system to name; empty for none
};

/// Writes the polygons of a GeoJSON text as a boundary file, and messages about them to standard
/// error.
///
/// Throws std::exception, whose text is for the user, if the target exists, the source is not
/// GeoJSON, a feature is not what a boundary file can hold, there is no polygon, or the system
/// fails. The target then does not exist, or is unchanged.
void importArea(const Conversion& conversion);

/// Writes the polygons of a boundary file as GeoJSON, one feature a polygon, and messages about
/// them to standard error. Throws like importArea.
void exportArea(const Conversion& conversion);

} // namespace veldtrim
