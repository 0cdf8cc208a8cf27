/// The inspection of a workspace: what a clipping run would do there.
#pragma once

#include "boundary/model/boundary_model.h"
#include "inspect/picture/density.h"
#include "inspect/report.h"

#include <memory>
#include <string>

namespace veldtrim {

struct Inspection {
    Report report;
    BoundaryModel model;
    std::unique_ptr<Density> density; ///< only where one was asked for
};

/// Reads what a run with these arguments would read, and writes nothing. Failed checks are part of
/// the report. Throws std::bad_alloc for lack of memory.
Inspection inspectWorkspace(const std::string& inputDirectory, const std::string& boundaryFile,
                            bool withDensity);

} // namespace veldtrim
