#include "run/clip_file.h"

#include "elevation/header.h"
#include "run/record_reader.h"
#include "text/line_reader.h"
#include "text/line_writer.h"

#include <pulsenote.h>

namespace veldtrim {

std::int32_t clipFile(BoundaryModel& model, std::string inputPath, std::string outputPath,
                      std::int32_t recordCount, double progressOffset, double progressScale) {
    LineReader input(inputPath);
    LineWriter output(outputPath);

    Line headerLine;
    input.next(headerLine);
    ElevationHeader header;
    std::string errorText;
    if (!readHeader(headerLine.text, header, errorText)) {
        return 0;
    }
    output.write(headerLine);

    constexpr int stateCode = 1;
    StateMessage(stateCode, "Clipping elevation data...", true);
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
