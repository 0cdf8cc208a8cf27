#include "run/skipped_file.h"

#include "status/report_state.h"

namespace veldtrim {

std::string readHeaderOrReason(std::string_view line, ElevationHeader& header) {
    std::string errorText;
    if (readHeader(line, header, errorText)) {
        return {};
    }
    if (errorText.empty()) {
        return "the header line is empty";
    }
    if (errorText.back() == ' ') {
        errorText.pop_back();
    }
    return errorText;
}

std::string cannotBeRead(std::error_code error) {
    return std::string(cannotBeReadBecause) + error.message();
}

std::string skippedText(const std::string& path, const std::string& reason) {
    return "Skipping input file " + path + ": " + reason;
}

void reportSkipped(const std::string& path, const std::string& reason) {
    reportState(skippedText(path, reason));
}

} // namespace veldtrim
