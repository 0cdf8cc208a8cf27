#include "inspect/command_line.h"

#include "inspect/inspection.h"
#include "inspect/picture/picture.h"
#include "inspect/report_json.h"
#include "inspect/report_text.h"

#include <pulsenote.h>

#include <CLI/CLI.hpp>

#include <cerrno>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <string>
#include <system_error>

namespace veldtrim {

namespace {

constexpr int keepsSomething = 0;
constexpr int keepsNothing = 1;
constexpr int wrongCommandLine = 2;

struct Arguments {
    std::string inputDirectory;
    std::string boundaryFile;
    std::string picture;
    bool asJson = false;
    bool all = false;
};

/// Throws std::system_error, which names the file and the reason, if the file cannot be written.
/// Does not change an existing file.
void checkThatFileCanBeWritten(const std::string& path) {
    const bool isNew = !std::ifstream(path).is_open();
    errno = 0;
    if (!std::ofstream(path, std::ios::app).is_open()) {
        throw std::system_error(errno, std::generic_category(), "cannot write the picture " + path);
    }
    if (isNew) {
        static_cast<void>(std::remove(path.c_str()));
    }
}

std::string checkPictureName(const std::string& name) {
    return name.ends_with(".png") || name.ends_with(".svg") ? ""
                                                            : "must end in .png or .svg: " + name;
}

void describe(CLI::App& app, Arguments& arguments) {
    app.add_option(
           "input-directory", arguments.inputDirectory,
           "directory of the elevation point files; ./NAME for one in the current directory")
        ->required();
    app.add_option("boundary-file", arguments.boundaryFile, "XML file with the polygons")
        ->required();
    app.add_option("--picture", arguments.picture, "draw a picture to this file, .png or .svg")
        ->check(CLI::Validator(checkPictureName, "FILE.png|FILE.svg"));
    app.add_flag("--json", arguments.asJson, "print JSON instead of text");
    app.add_flag("--all", arguments.all, "describe every file and polygon, also the sound ones");
    app.set_version_flag("--version", VELDTRIM_VERSION);
    app.footer("Exit code: 0 when a run would keep something, 1 when it would fail or keep "
               "nothing, 2 for a wrong command line.");
}

int inspect(const Arguments& arguments) {
    if (!arguments.picture.empty()) {
        checkThatFileCanBeWritten(arguments.picture);
    }
    const Inspection inspection = inspectWorkspace(arguments.inputDirectory, arguments.boundaryFile,
                                                   !arguments.picture.empty());
    const Report& report = inspection.report;
    std::cout << (arguments.asJson ? jsonOf(report, arguments.all) : textOf(report, arguments.all))
              << std::flush;
    if (inspection.density) {
        drawPicture(inspection, arguments.picture);
    } else if (!arguments.picture.empty()) {
        std::cerr << "no picture: nothing was read" << std::endl;
    }
    return report.wouldKeep() ? keepsSomething : keepsNothing;
}

} // namespace

int inspectCommand(int argc, char** argv) {
    CLI::App app("Explains what a run of Veldtrim would keep and drop. Changes nothing.",
                 "veldtrim-inspect");
    Arguments arguments;
    describe(app, arguments);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : wrongCommandLine;
    }
    MessageSender::Instance(false);
    return inspect(arguments);
}

} // namespace veldtrim
