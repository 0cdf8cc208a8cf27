#include "tiles/command_line.h"

#include "platform/posix/stop_signals.h"
#include "run/outcome.h"
#include "tiles/clip_shard.h"
#include "tiles/local_engine.h"
#include "tiles/tiles_run.h"

#include <CLI/CLI.hpp>
#include <pulsenote.h>

#include <algorithm>
#include <cstdint>
#include <iomanip>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace veldtrim {

namespace {

constexpr int done = 0;
constexpr int wrongCommandLine = 2;

/// What the arguments can say.
struct Arguments {
    Order order;
    TilesOptions options;
    bool pipe = false;
    int jobs = 0;
    bool slurm = false;
    std::string sbatch;
    std::string staging;
    std::size_t shard = 0;
    bool isJob = false;
};

void describeOrder(CLI::App& app, Arguments& arguments) {
    app.add_option("scans", arguments.order.scans, "input directory path")->required();
    app.add_option("output", arguments.order.output,
                   "output directory name, beside the input directory")
        ->required();
    app.add_option("boundary", arguments.order.boundary, "boundary file path")->required();
    app.add_option("--tile-index", arguments.options.tileIndex,
                   "tile index; tiles that it shows to be outside are not read, and it is brought "
                   "up to date");
    CLI::Option* const count =
        app.add_option("--shards", arguments.options.sizes.shards, "number of shards")
            ->check(CLI::PositiveNumber);
    app.add_option("--shard-size", arguments.options.sizes.bytes,
                   "size of a shard in bytes, or with a unit such as 500MB; larger tiles are cut")
        ->transform(CLI::AsSizeValue(true))
        ->check(CLI::PositiveNumber)
        ->excludes(count);
}

void describeEngine(CLI::App& app, Arguments& arguments) {
    app.add_option("--jobs", arguments.jobs,
                   "how many shards are done at once (default: one for each processor, and with "
                   "--slurm as many as Slurm starts)")
        ->check(CLI::PositiveNumber);
    CLI::Option* const slurm =
        app.add_flag("--slurm", arguments.slurm, "let a Slurm cluster do the shards");
    app.add_option("--sbatch", arguments.sbatch,
                   "further options of sbatch, such as \"--partition=long --time=60\"")
        ->needs(slurm);
}

/// Splits at blanks. What contains blanks is quoted.
std::vector<std::string> splitWords(const std::string& text) {
    std::istringstream stream(text);
    std::vector<std::string> words;
    for (std::string word; stream >> std::quoted(word);) {
        words.push_back(word);
    }
    return words;
}

void chooseEngine(Arguments& arguments) {
    TilesOptions& options = arguments.options;
    if (arguments.slurm) {
        options.slurm = SlurmOptions{splitWords(arguments.sbatch), arguments.jobs};
        options.sizes.jobs = 0;
    } else if (arguments.jobs > 0) {
        options.sizes.jobs = arguments.jobs;
    }
}

void describeRun(CLI::App& app, Arguments& arguments) {
    describeOrder(app, arguments);
    describeEngine(app, arguments);
    app.add_flag("--keep-staging", arguments.options.keepStaging,
                 "keep the staging directory after the run");
    app.add_flag("--pipe", arguments.pipe, "messages for a host program, as -pipe of Veldtrim");
}

void describeStaging(CLI::App& app, Arguments& arguments) {
    app.add_option("staging", arguments.staging, "staging directory of the plan")->required();
}

/// Parses the words, of which the first is the last argument.
bool parse(CLI::App& app, std::vector<std::string> words, int& exitCode) {
    try {
        app.parse(std::move(words));
        return true;
    } catch (const CLI::ParseError& error) {
        exitCode = app.exit(error) == 0 ? done : wrongCommandLine;
        return false;
    }
}

int run(CLI::App& app, const std::vector<std::string>& words, Arguments& arguments) {
    app.description(
        "Does what Veldtrim does, on all processors or on a cluster, with the same result.");
    describeRun(app, arguments);
    app.set_version_flag("--version", VELDTRIM_VERSION);
    app.footer(
        "Steps for other engines, each with its own --help:\n"
        "  veldtrim-tiles plan SCANS OUTPUT BOUNDARY\n"
        "  veldtrim-tiles clip STAGING SHARD\n"
        "  veldtrim-tiles merge STAGING\n\n"
        "Exit code: 0 when the output directory is complete, 1 when it does not exist, 2 for "
        "a wrong command line.");
    int exitCode = done;
    if (!parse(app, words, exitCode)) {
        return exitCode;
    }
    chooseEngine(arguments);
    reportStart();
    MessageSender::Instance(arguments.pipe);
    return reportOutcome([&] { return runInShards(arguments.order, arguments.options); });
}

int plan(CLI::App& app, const std::vector<std::string>& words, Arguments& arguments) {
    app.description("Makes the plan of a run: its staging directory, and which tiles each shard "
                    "clips. Prints their number.");
    describeOrder(app, arguments);
    int exitCode = done;
    return parse(app, words, exitCode) ? planRun(arguments.order, arguments.options) : exitCode;
}

int index(CLI::App& app, const std::vector<std::string>& words, Arguments& arguments) {
    app.description("Makes a GeoJSON file with the bounds of all tiles, or brings it up to date.");
    app.add_option("scans", arguments.order.scans, "directory of the tiles")->required();
    app.add_option("tile-index", arguments.options.tileIndex, "tile index")->required();
    describeEngine(app, arguments);
    int exitCode = done;
    if (!parse(app, words, exitCode)) {
        return exitCode;
    }
    chooseEngine(arguments);
    MessageSender::Instance(false);
    return indexTiles(arguments.order.scans, arguments.options);
}

int clip(CLI::App& app, const std::vector<std::string>& words, Arguments& arguments) {
    app.description("Clips one shard of a plan. The shards can be clipped in any order, on any "
                    "number of machines, also more than once.");
    describeStaging(app, arguments);
    app.add_option("shard", arguments.shard, "number of the shard, from 1")->required();
    int exitCode = done;
    if (!parse(app, words, exitCode)) {
        return exitCode;
    }
    noteStopSignals();
    return clipShard(Staging(arguments.staging), arguments.shard);
}

int merge(CLI::App& app, const std::vector<std::string>& words, Arguments& arguments) {
    app.description("Merges the shards of a plan, which must all be clipped, into the output "
                    "directory.");
    describeStaging(app, arguments);
    app.add_flag("--keep-staging", arguments.options.keepStaging,
                 "keep the staging directory after the merge");
    app.add_flag("--pipe", arguments.pipe, "messages for a host program, as -pipe of Veldtrim");
    app.add_flag("--from-engine", arguments.isJob)->group(""); // for the jobs of --slurm
    int exitCode = done;
    if (!parse(app, words, exitCode)) {
        return exitCode;
    }
    if (arguments.isJob) {
        noteStopSignals();
        return mergeAsJob(arguments.staging);
    }
    MessageSender::Instance(arguments.pipe);
    return reportOutcome(
        [&] { return mergeRun(arguments.staging, arguments.options.keepStaging); });
}

} // namespace

int tilesCommand(int argc, char** argv) {
    std::vector<std::string> words(argv + std::min(argc, 1), argv + argc);
    const auto options = std::find(words.begin(), words.end(), "--");
    std::replace(words.begin(), options, std::string("-pipe"), std::string("--pipe"));
    Arguments arguments;
    arguments.options.sizes.jobs = processorCount();

    using Step = int (*)(CLI::App&, const std::vector<std::string>&, Arguments&);
    Step step = run;
    std::string name = "veldtrim-tiles";
    // Only the first word can name a step: any other can be a directory of that name.
    for (const auto& [word, function] : {std::pair<std::string_view, Step>("plan", plan),
                                         {"clip", clip},
                                         {"merge", merge},
                                         {"index", index}}) {
        if (!words.empty() && words.front() == word) {
            step = function;
            name.append(" ").append(word);
            words.erase(words.begin());
            break;
        }
    }
    CLI::App app("", name);
    std::reverse(words.begin(), words.end());
    return step(app, words, arguments);
}

} // namespace veldtrim
