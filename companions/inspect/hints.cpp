#include "inspect/hints.h"

#include "explain/shell_command.h"
#include "explain/wording.h"
#include "inspect/advice/bounds_advice.h"

#include <algorithm>

namespace veldtrim {

namespace {

std::string adviceOnSubdirectories(const Report& report) {
    constexpr std::size_t mostNames = 8;
    std::string list;
    for (std::size_t i = 0; i < report.subdirectories.size() && i < mostNames; ++i) {
        list += (i == 0 ? "" : ", ") + printable(report.subdirectories[i]);
    }
    const std::size_t more =
        report.subdirectories.size() - std::min(report.subdirectories.size(), mostNames);
    list += more == 0 ? "" : " and " + std::to_string(more) + " more";
    // With -n, files of the same name are left where they are.
    return "a run does not read subdirectories, and there are files with accepted endings in " +
           list + ". Clip each of them by itself, or move the files up: " +
           commandFor("mv -n {}/* ", report.subdirectories.front()) +
           commandFor("{}", report.inputDirectory);
}

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
    std::vector<std::string> hints;
    if (!hasWrongPoints(report)) {
        hints = adviceOnBounds(report.pointBounds, report.modelBounds, report.boundaryFile);
    }
    if (!report.subdirectories.empty()) {
        hints.push_back(adviceOnSubdirectories(report));
    }
    addHintsOnFiles(report, hints);
    return hints;
}

} // namespace veldtrim
