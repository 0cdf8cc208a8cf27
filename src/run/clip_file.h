/// The clipping pass over one elevation point file.
#pragma once

#include "boundary/model/boundary_model.h"

#include <cstdint>
#include <string>

namespace veldtrim {

/// Copies the header line of the file at `inputPath`, and every record whose point lies within the
/// model boundaries, unchanged but for the line end, to the file at `outputPath`, which is created,
/// or emptied if it is there.
///
/// Reads exactly `recordCount` lines after the header, its count from countRecords; a line that is
/// no record is dropped. Each kept line leaves in one write of its own. Progress is reported for
/// every record, as a stretch of the run that begins after `progressOffset` records, where one
/// record moves the run by `progressScale`.
///
/// Returns the number of kept records. It is 0, and the output file stays empty, when the header is
/// not accepted or the input file cannot be opened; a StateMessage then says why, unless
/// `recordCount` is negative. An output file that cannot be created is reported in a StateMessage
/// and receives nothing; the records count all the same. Throws std::system_error when reading or
/// writing fails later; the output file then ends with the last line that was written whole. For
/// lack of memory, std::bad_alloc; a few of the records read last may then be missing.
std::int32_t clipFile(BoundaryModel& model, std::string inputPath, std::string outputPath,
                      std::int32_t recordCount, double progressOffset, double progressScale);

} // namespace veldtrim
