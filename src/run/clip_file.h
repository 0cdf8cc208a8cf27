/// The clipping pass over one elevation point file.
#pragma once

#include "boundary/model/boundary_model.h"

#include <cstdint>
#include <string>

namespace veldtrim {

/// The text of the StateMessage that the clipping of a file begins.
inline constexpr const char* clippingText = "Clipping elevation data...";

/// Copies the header line of the file at `inputPath`, and every record whose point lies in the
/// model boundaries, to the file at `outputPath`. Lines are unchanged except for the line end.
/// Creates the output file, or empties it if it exists.
///
/// Reads exactly `recordCount` lines after the header, the result of countRecords for the file, and
/// drops those that are not records. Writes each kept line with one system write. Reports progress
/// for every record: the file's part of the run begins after `progressOffset` records, and each
/// record advances the run by `progressScale`.
///
/// Returns the number of kept records. It is 0, and the output file stays empty, if the header is
/// not accepted or the input file cannot be opened; a StateMessage gives the reason, unless
/// `recordCount` is negative. If the output file cannot be created, a StateMessage says so, and
/// nothing is written, but the result is the same.
///
/// Throws std::system_error if reading or writing fails later; the output file then ends with the
/// last line that was written as a whole. Throws std::bad_alloc if memory runs out; a few of the
/// records read last may then be missing.
std::int32_t clipFile(BoundaryModel& model, std::string inputPath, std::string outputPath,
                      std::int32_t recordCount, double progressOffset, double progressScale);

} // namespace veldtrim
