#include "inspect/inspect_workspace.h"
#include "inspect/picture.h"
#include "inspect/report_text.h"
#include "platform/process_setup.h"
#include "run/path_encoding.h"

#include <pulsenote.h>

#include <CLI/CLI.hpp>

#include <exception>
#include <iostream>
#include <string>

namespace {

constexpr int keepsNothing = 1;
constexpr int wrongCommandLine = 2;

struct Arguments {
    std::string inputDirectory;
    std::string boundaryFile;
    std::string picture;
    bool asJson = false;
};

int inspect(const Arguments& arguments) {
    veldtrim::Inspection inspection = veldtrim::inspectWorkspace(
        arguments.inputDirectory, arguments.boundaryFile, !arguments.picture.empty());
    const veldtrim::Report& report = inspection.report;
    std::cout << (arguments.asJson ? veldtrim::jsonOf(report) : veldtrim::textOf(report))
              << std::flush;
    if (inspection.density) {
        veldtrim::drawPicture(inspection, arguments.picture);
    } else if (!arguments.picture.empty()) {
        std::cerr << "no picture: nothing was read" << std::endl;
    }
    return report.wouldKeep() ? 0 : keepsNothing;
}

std::string checkPictureName(const std::string& name) {
    return name.ends_with(".png") || name.ends_with(".svg") ? ""
                                                            : "must end in .png or .svg: " + name;
}

int run(int argc, char** argv) {
    CLI::App app("Tells what a run of Veldtrim would keep and drop, and why. Changes nothing.",
                 "veldtrim-inspect");
    Arguments arguments;
    app.add_option("input-directory", arguments.inputDirectory,
                   "directory with the elevation point files; ./NAME for one right here")
        ->required();
    app.add_option("boundary-file", arguments.boundaryFile, "XML file with the polygons")
        ->required();
    app.add_option("--picture", arguments.picture, "draws to this file, .png or .svg")
        ->check(CLI::Validator(checkPictureName, "FILE.png|FILE.svg"));
    app.add_flag("--json", arguments.asJson, "prints JSON instead of text");
    app.set_version_flag("--version", VELDTRIM_VERSION);
    app.footer("Exit code: 0 when a run would keep something, 1 when it would fail or keep "
               "nothing, 2 for a wrong command line.");
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : wrongCommandLine;
    }
    MessageSender::Instance(false);
    return inspect(arguments);
}

} // namespace

int main(int argc, char** argv) {
    veldtrim::setUpProcess();
    veldtrim::adoptPathEncoding();
    try {
        return run(argc, argv);
    } catch (const std::exception& error) {
        std::cerr << "error: " << error.what() << std::endl;
    } catch (...) {
        std::cerr << "error: unknown failure" << std::endl;
    }
    return keepsNothing;
}
