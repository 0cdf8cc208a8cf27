#include "geojson/command_line.h"

#include "geojson/conversion.h"
#include "platform/new_file.h"

#include <CLI/CLI.hpp>

#include <string>

namespace veldtrim {

namespace {

constexpr int done = 0;
constexpr int wrongCommandLine = 2;

CLI::App* describeImport(CLI::App& app, Conversion& conversion, std::string& holes) {
    CLI::App* const command =
        app.add_subcommand("import", "make a boundary file from the polygons of a GeoJSON file");
    command->add_option("geojson", conversion.source, "GeoJSON file; - for standard input")
        ->required();
    command
        ->add_option("boundary-file", conversion.target,
                     "boundary file to create; - for standard output")
        ->required();
    command
        ->add_option("--holes", holes,
                     "what to do with a hole: refuse the file, or bridge it to its outer ring")
        ->check(CLI::IsMember({"refuse", "bridge"}))
        ->default_str("refuse");
    CLI::Option* const field = command->add_option(
        "--id-field", conversion.idField,
        "property with the ids of the polygons, which are integers (default: id; features without "
        "it are counted)");
    command->add_flag("--count-ids", conversion.countIds, "count the features for the ids")
        ->excludes(field);
    return command;
}

CLI::App* describeExport(CLI::App& app, Conversion& conversion) {
    CLI::App* const command =
        app.add_subcommand("export", "make a GeoJSON file from the polygons of a boundary file");
    command->add_option("boundary-file", conversion.source, "boundary file; - for standard input")
        ->required();
    command
        ->add_option("geojson", conversion.target, "GeoJSON file to create; - for standard output")
        ->required();
    command->add_option("--crs", conversion.crs,
                        "name of the coordinate system for the GeoJSON file, such as EPSG:25832");
    return command;
}

} // namespace

int boundaryCommand(int argc, char** argv) {
    CLI::App app(
        "Converts between GeoJSON and boundary files of Veldtrim. Never overwrites a file.",
        "veldtrim-boundary");
    app.allow_windows_style_options(false); // "/area/boundary.xml" is a path
    Conversion conversion;
    std::string holes;
    const CLI::App* const importing = describeImport(app, conversion, holes);
    describeExport(app, conversion);
    app.require_subcommand(1);
    app.set_version_flag("--version", VELDTRIM_VERSION);
    app.footer("Exit code: 0 when the file was written, 1 when it was not, 2 for a wrong command "
               "line.");
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? done : wrongCommandLine;
    }
    removeFileWhenInterrupted();
    conversion.bridgeHoles = holes == "bridge";
    if (importing->parsed()) {
        importArea(conversion);
    } else {
        exportArea(conversion);
    }
    return done;
}

} // namespace veldtrim
