#include "inspect/hints.h"

#include "inspect/advice/bounds_advice.h"
#include "inspect/wording.h"

#include <algorithm>

namespace veldtrim {

namespace {

void addHintsOnFiles(const Report& report, std::vector<std::string>& hints) {
    const auto count = [&](auto holds) {
        return std::count_if(report.files.begin(), report.files.end(), holds);
    };
    const auto say = [&](auto files, const std::string& text) {
        if (files > 0) {
            hints.push_back(std::to_string(files) + (files == 1 ? " file " : " files ") + text);
        }
    };
    say(count([](const FileReport& file) { return file.failed; }),
        "cannot be read to the end: the run would stop there");
    say(count([](const FileReport& file) { return file.taken && !file.advice.empty(); }),
        "read, but probably not as intended: see the remarks on them");
    say(count([](const FileReport& file) {
            return !file.taken && !file.failed && !file.advice.empty();
        }),
        "left out, probably not as intended: see the remarks on them");
}

} // namespace

bool keepsLittle(const Report& report) {
    const std::int64_t points = report.total.kept() + report.total.outside;
    return points > 0 && report.total.kept() * 100 < points;
}

std::vector<std::string> findHints(const Report& report) {
    std::vector<std::string> hints = adviceOnBounds(report.pointBounds, report.modelBounds);
    if (!report.subdirectories.empty()) {
        hints.push_back(
            "a run does not read subdirectories; " + printable(report.subdirectories.front()) +
            " holds files with accepted endings. Inspect and clip it by itself, or move "
            "the files");
    }
    addHintsOnFiles(report, hints);
    return hints;
}

} // namespace veldtrim
