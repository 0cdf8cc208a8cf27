/// Reads the model boundaries from the boundary file.
#pragma once

#include "boundary/model/boundary_model.h"

#include <string>

namespace veldtrim {

/// Appends the polygons of the boundary file at `boundaryFilePath` to `model`.
///
/// The boundary file is an XML document with a root element of any name. Its first child `TavelDGM`
/// contains `group` elements. Those whose `type` is exactly "boundaries" are read: each `polygon`
/// has an integer `id` and contains the `point` elements of its ring, which have real `x` and `y`
/// and an integer `segmenttype`. docs/file-formats.md has an example.
///
/// Writes a trace of what it finds to standard output. Returns false after the first failure: the
/// file cannot be read as XML, has no `TavelDGM`, or an attribute is missing or not a number. It
/// then has reported the failure as an ErrorMessage with code 1, and vertices and whole polygons
/// read before the failure stay in the model.
bool readin_b_XML(std::string boundaryFilePath, BoundaryModel& model);

} // namespace veldtrim
