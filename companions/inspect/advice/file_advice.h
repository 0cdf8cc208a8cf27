/// What to do about one file of the input directory.
#pragma once

#include "inspect/report.h"

#include <string>
#include <vector>

namespace veldtrim {

/// Sentences on what is wrong with the file at `path`, as its report says, and what to do; none for
/// a file that needs nothing. Opens the file again if it is skipped.
std::vector<std::string> adviceOnFile(const FileReport& file, const std::string& path);

} // namespace veldtrim
