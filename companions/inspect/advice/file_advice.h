/// Advice on a file of the input directory.
#pragma once

#include "inspect/report.h"

#include <string>
#include <vector>

namespace veldtrim {

/// Returns sentences that say what is wrong with the file at `path`, according to its report, and
/// what to do. The result is empty for a sound file. May read the beginning of the file again.
std::vector<std::string> adviceOnFile(const FileReport& file, const std::string& path);

} // namespace veldtrim
