#include "run/command_line.h"

#include "run/clip_workspace.h"
#include "status/console.h"

#include <pulsenote.h>

#include <algorithm>
#include <exception>
#include <string_view>
#include <utility>

#include <boost/filesystem/path.hpp>

namespace veldtrim {

namespace {

constexpr const char* usage =
    "Usage: Veldtrim <input directory path> <output directory name> <boundary file path>";

constexpr int outcomeCode = 1;
constexpr int runErrorCode = 0;

int fail() {
    FailedMessage(outcomeCode, "Clipping of elevation data with model boundaries failed.");
    return 1;
}

} // namespace

int runCommandLine(int argc, const char* const* argv) {
    StateMessage(outcomeCode, "Starting Orlagon...", true);

    const bool pipeMode = std::any_of(argv + std::min(argc, 1), argv + argc,
                                      [](std::string_view each) { return each == "-pipe"; });
    MessageSender::Instance(pipeMode);
    if (argc != (pipeMode ? 5 : 4)) {
        writeConsoleLine(usage);
        ErrorMessage(runErrorCode, usage);
        return fail();
    }

    try {
        BoundaryModel model;
        const int result = clipDirectory(model, argv[1], argv[2], argv[3]);
        if (result != 0) {
            return fail();
        }
        FinishMessage(outcomeCode, "Finished clipping elevation data with model boundaries");
        return result;
    } catch (const std::exception& error) {
        ErrorMessage(runErrorCode, error.what());
        return fail();
    }
}

int clipDirectory(BoundaryModel& model, std::string inputDirPath, std::string outputDirName,
                  std::string boundaryFilePath) {
    const boost::filesystem::path inputDirectory(inputDirPath);
    return clipWorkspace(model, inputDirectory.parent_path().string(),
                         inputDirectory.filename().string(), std::move(outputDirName),
                         std::move(boundaryFilePath));
}

} // namespace veldtrim
