#include "run/command_line.h"

#include "run/clip_workspace.h"
#include "run/outcome.h"
#include "run/workspace_checks.h"
#include "status/console.h"

#include <pulsenote.h>

#include <algorithm>
#include <string_view>
#include <utility>

namespace veldtrim {

namespace {

constexpr const char* usage =
    "Usage: Veldtrim <input directory path> <output directory name> <boundary file path>";

} // namespace

int runCommandLine(int argc, const char* const* argv) {
    reportStart();

    const bool pipeMode = std::any_of(argv + std::min(argc, 1), argv + argc,
                                      [](std::string_view each) { return each == "-pipe"; });
    MessageSender::Instance(pipeMode);
    if (argc != (pipeMode ? 5 : 4)) {
        writeConsoleLine(usage);
        ErrorMessage(runErrorCode, usage);
        return reportFailure();
    }

    return reportOutcome([argv] {
        BoundaryModel model;
        return clipDirectory(model, argv[1], argv[2], argv[3]);
    });
}

int clipDirectory(BoundaryModel& model, std::string inputDirPath, std::string outputDirName,
                  std::string boundaryFilePath) {
    auto [workspacePath, inputDirName] = splitInputPath(inputDirPath);
    return clipWorkspace(model, std::move(workspacePath), std::move(inputDirName),
                         std::move(outputDirName), std::move(boundaryFilePath));
}

} // namespace veldtrim
