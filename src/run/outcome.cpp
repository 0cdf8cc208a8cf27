#include "run/outcome.h"

#include <pulsenote.h>

#include <exception>

namespace veldtrim {

namespace {

constexpr int outcomeCode = 1;

} // namespace

void reportStart() {
    StateMessage(outcomeCode, startText, true);
}

int reportFailure() {
    FailedMessage(outcomeCode, "Clipping of elevation data with model boundaries failed.");
    return 1;
}

int reportOutcome(const std::function<int()>& run) {
    try {
        if (run() != 0) {
            return reportFailure();
        }
        FinishMessage(outcomeCode, "Finished clipping elevation data with model boundaries");
        return 0;
    } catch (const std::exception& error) {
        ErrorMessage(runErrorCode, error.what());
        return reportFailure();
    }
}

} // namespace veldtrim
