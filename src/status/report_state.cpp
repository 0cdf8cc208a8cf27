#include "status/report_state.h"

#include <pulsenote.h>

namespace veldtrim {

void reportState(const std::string& text) {
    constexpr int stateCode = 1;
    StateMessage(stateCode, text, true);
}

void reportEndOfProgress() {
    constexpr int steps = 100;
    ProgressMessage(1.0, 100.0, steps).OnProgress(steps, false);
}

} // namespace veldtrim
