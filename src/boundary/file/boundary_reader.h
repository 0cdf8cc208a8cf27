/// Reads the model boundaries from the boundary file.
#pragma once

#include "boundary/model/boundary_model.h"

#include <string>

namespace veldtrim {

/// Appends the polygons of the boundary file at `boundaryFilePath` to `model`.
///
/// The boundary file is an XML document: below its root element, whatever its name, the first
/// element `TavelDGM`; in it every `group` whose `type` is exactly "boundaries"; in each of those
/// every `polygon`, with an integer `id`; in each polygon its `point` elements with real `x` and
/// `y` and an integer `segmenttype`, which form the ring. docs/file-formats.md has an example.
///
/// Writes a trace of what it finds to standard output. Returns false after the first failure: the
/// file cannot be read as XML, has no `TavelDGM`, or an attribute is missing or not a number. The
/// failure has then been reported as an ErrorMessage with code 1; vertices and whole polygons read
/// before it stay in the model.
bool readin_b_XML(std::string boundaryFilePath, BoundaryModel& model);

} // namespace veldtrim
