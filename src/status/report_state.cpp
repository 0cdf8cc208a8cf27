#include "status/report_state.h"

#include <pulsenote.h>

namespace veldtrim {

void reportState(const std::string& text) {
    constexpr int stateCode = 1;
    StateMessage(stateCode, text, true);
}

} // namespace veldtrim
