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
    std::unique_ptr<Density> density; ///< null unless requested
};

/// Reads what a run with these arguments would read, but writes nothing. The report contains failed
/// checks and failures of the system. Throws std::bad_alloc if memory runs out.
Inspection inspectWorkspace(const std::string& inputDirectory, const std::string& boundaryFile,
                            bool withDensity);

} // namespace veldtrim
