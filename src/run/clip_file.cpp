#include "run/clip_file.h"

#include "elevation/header.h"
#include "elevation/line_reader.h"
#include "elevation/record.h"
#include "run/line_writer.h"

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
    ElevationPoint point;
    for (std::int32_t i = 0; i < recordCount; ++i) {
        progress.OnProgress(i, false);
        input.next(line);
        if (parseRecord(line.text, format, separator, point) && model.isInBoundary(point)) {
            output.write(line);
            ++kept;
        }
    }
    input.close();
    output.close();
    return kept;
}

} // namespace veldtrim
