#include "status/report_error.h"

#include "status/console.h"

#include <pulsenote.h>

namespace veldtrim {

int reportError(std::string text) {
    writeConsoleLine(text);
    constexpr int failedCheckCode = 2;
    ErrorMessage(failedCheckCode, text);
    return 1;
}

} // namespace veldtrim
