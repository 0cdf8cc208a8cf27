#include "run/clip_file.h"

#include "elevation/header.h"
#include "run/record_reader.h"
#include "run/skipped_file.h"
#include "status/report_state.h"
#include "text/line_reader.h"
#include "text/line_writer.h"

#include <pulsenote.h>

#include <system_error>

namespace veldtrim {

namespace {

/// Reads the header line of a file that was accepted before its records were counted. Returns
/// whether it still is; if not, reports why the file is skipped.
bool readHeaderAgain(LineReader& input, const std::string& path, std::int32_t recordCount,
                     Line& line, ElevationHeader& header) {
    input.next(line);
    const std::error_code openError = input.openError();
    const std::string reason =
        openError ? cannotBeRead(openError) : readHeaderOrReason(line.text, header);
    // If the count is negative, either the file could not be opened before, which was reported
    // then, or it has no record that could be lost.
    if (!reason.empty() && recordCount >= 0) {
        reportSkipped(path, reason);
    }
    return reason.empty();
}

} // namespace

std::int32_t clipFile(BoundaryModel& model, std::string inputPath, std::string outputPath,
                      std::int32_t recordCount, double progressOffset, double progressScale) {
    LineReader input(inputPath);
    LineWriter output(outputPath);

    Line headerLine;
    ElevationHeader header;
    if (!readHeaderAgain(input, inputPath, recordCount, headerLine, header)) {
        return 0;
    }
    if (const std::error_code error = output.openError()) {
        reportState("Cannot create output file " + outputPath + ": " + error.message() +
                    ": its records are counted but not written");
    }
    output.write(headerLine);

    reportState(clippingText);
    ProgressMessage progress(progressOffset * progressScale,
                             (recordCount + progressOffset) * progressScale, recordCount);
    RecordReader records(input, header, model, recordCount);
    std::int32_t kept = 0;
    for (std::int32_t i = 0; i < recordCount; ++i) {
        progress.OnProgress(i, false);
        const Record& record = records.next();
        if (record.isKept()) {
            output.write(record.line);
            ++kept;
        }
    }
    input.close();
    output.close();
    return kept;
}

} // namespace veldtrim
