#include "tiles/engine.h"

#include "platform/posix/own_program.h"

#include <algorithm>
#include <system_error>
#include <thread>

#include <boost/filesystem/operations.hpp>

namespace veldtrim {

std::unique_ptr<ChildProcess> startParallel(const Staging& staging, const std::string& numbers,
                                            int jobs) {
    boost::filesystem::create_directory(staging.engine());
    ChildCommand command;
    command.words = {"parallel", "--plain", "--will-cite", "--ungroup"};
    const auto option = [&](const char* name, const std::string& value) {
        command.words.insert(command.words.end(), {name, value});
    };
    option("--jobs", std::to_string(jobs));
    // An attempt that was killed cannot try again by itself.
    option("--retries", "2");
    // What cannot be done is told soon, and the others are not begun.
    option("--halt", "soon,fail=1");
    // When it is to stop, an attempt removes what it has not published.
    option("--termseq", "TERM,3000,KILL,100");
    for (const char* word : {"\"$VELDTRIM_TILES\"", "clip", ".", "{}"}) {
        command.words.emplace_back(word);
    }
    command.directory = staging.root();
    command.input = numbers;
    command.output = command.errors = "engine.log";
    command.variables = {{"VELDTRIM_TILES", ownProgram()},
                         {"PARALLEL_SHELL", "/bin/sh"},
                         {"PARALLEL_HOME", "engine"}};
    command.ownGroup = true;
    try {
        return std::make_unique<ChildProcess>(command);
    } catch (const std::system_error& error) {
        if (error.code() == std::errc::no_such_file_or_directory) {
            throw std::system_error(error.code(), "GNU parallel is not installed (in Debian, the "
                                                  "package parallel)");
        }
        throw;
    }
}

int processorCount() {
    return static_cast<int>(std::max(std::thread::hardware_concurrency(), 1U));
}

} // namespace veldtrim
