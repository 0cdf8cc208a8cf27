#include "run/clip_file.h"

#include "elevation/header.h"
#include "run/record_batch.h"
#include "text/line_reader.h"
#include "text/line_writer.h"

#include <pulsenote.h>

namespace veldtrim {

std::int32_t clipFile(BoundaryModel& model, std::string inputPath, std::string outputPath,
                      std::int32_t recordCount, double progressOffset, double progressScale) {
    LineReader input(inputPath);
    LineWriter output(outputPath);

    Line line;
    input.next(line);
    char separator = 0;
    char format = 0;
    std::int32_t layout = 0;
    std::string errorText;
    if (!parseHeader(line.text, separator, format, layout, errorText)) {
        return 0;
    }
    output.write(line);

    constexpr int stateCode = 1;
    StateMessage(stateCode, "Clipping elevation data...", true);
    ProgressMessage progress(progressOffset * progressScale,
                             (recordCount + progressOffset) * progressScale, recordCount);
    std::int32_t kept = 0;
    RecordBatch batch;
    std::size_t next = 0; // record of the batch
    for (std::int32_t i = 0; i < recordCount; ++i, ++next) {
        progress.OnProgress(i, false);
        if (next == batch.size()) {
            batch.read(input, static_cast<std::size_t>(recordCount - i), format, separator, model);
            next = 0;
        }
        if (batch.keeps(next)) {
            output.write(batch.line(next));
            ++kept;
        }
    }
    input.close();
    output.close();
    return kept;
}

} // namespace veldtrim
