/// Messages to the program that uses GDAL.
#pragma once

#include <string>

#include <cpl_error.h>

namespace veldtrim {

inline void reportError(const std::string& message) {
    CPLError(CE_Failure, CPLE_AppDefined, "%s", message.c_str());
}

inline void reportWarning(const std::string& message) {
    CPLError(CE_Warning, CPLE_AppDefined, "%s", message.c_str());
}

} // namespace veldtrim
