#include "apps/maya2vistrel/Options.h"

#include "apps/maya2vistrel/exitStatus.h"
#include "apps/maya2vistrel/outputPath.h"

#include <CLI/CLI.hpp>

#include <iostream>

namespace {

constexpr const char* kAbout =
    "Converts a Maya scene, ASCII (.ma) or binary (.mb), into a Vistrel scene file. No Maya is "
    "needed.\n"
    "\n"
    "Examples:\n"
    "  maya2vistrel room.ma                        writes room.ma.obx beside it\n"
    "  maya2vistrel room.mb                        writes room.obx beside it\n"
    "  maya2vistrel room.ma -o out/room.obx        writes there\n"
    "  maya2vistrel room.ma --frame 24             as the scene stands at frame 24\n"
    "  maya2vistrel room.ma --report room.json     and tells what was approximated or left out\n"
    "  maya2vistrel room.ma -o - | renderer -      to standard output\n";

// clang-format off
constexpr const char* kFooter =
    "Exit status: 0 done, 2 wrong usage, 3 scene missing or unreadable, 4 not a Maya scene or damaged,\n"
    "6 the result could not be written, 7 the importer died. An existing result stays as it was unless\n"
    "the status is 0.";
// clang-format on

struct Flags {
    std::optional<int> frame;
    bool keepHierarchy = false;
    bool splitLayers = false;
    bool uniqueMaterials = false;
    bool includeNurbs = false;
    bool noTessellate = false;
    std::optional<double> curveRadius;
    bool smoothCurves = false;
    std::string extractor = "standard";
    bool text = false;
    std::string logLevel;
};

void declareFiles(CLI::App& app, Options& options)
{
    app.add_option("scene", options.scene,
                   "the scene to convert, .ma or .mb; its content tells which")
        ->required();
    app.add_option("-o,--output", options.output, "the file to write; - is standard output")
        ->type_name("FILE");
    app.add_option("--report", options.reportFile, "write a full report of the conversion as JSON")
        ->type_name("FILE");
    app.add_flag("-q,--quiet", options.quiet, "no progress, no summary; errors only");
    app.add_option("--importer", options.importer,
                   "the importer to run (default: maya_importer beside this program)")
        ->type_name("PROGRAM");
}

void declareSettings(CLI::App& app, Flags& flags)
{
    const auto group = "What to convert, and how";
    app.add_option(
           "--frame", flags.frame,
           "as the scene stands at this frame, without animation (default: as saved, with it)")
        ->type_name("N")
        ->group(group);
    app.add_flag("--keep-hierarchy", flags.keepHierarchy,
                 "ask the renderer to keep the groups instead of merging them")
        ->group(group);
    app.add_flag("--split-layers", flags.splitLayers,
                 "one group for each display layer, and one for the whole scene")
        ->group(group);
    app.add_flag("--unique-materials", flags.uniqueMaterials,
                 "a material of its own for every object")
        ->group(group);
    app.add_flag("--include-nurbs", flags.includeNurbs,
                 "write NURBS surfaces beside their meshes, not only the meshes")
        ->group(group);
    app.add_flag("--no-tessellate", flags.noTessellate,
                 "no meshes for NURBS surfaces; without --include-nurbs nothing is left of them")
        ->group(group);
    app.add_option("--curve-radius", flags.curveRadius,
                   "radius of hair whose points have none of their own (default: 1)")
        ->type_name("R")
        ->check(CLI::NonNegativeNumber)
        ->group(group);
    app.add_flag("--smooth-curves", flags.smoothCurves,
                 "ask the renderer to fit hair to cubic curves")
        ->group(group);
    app.add_option("--extractor", flags.extractor,
                   "standard: each part has its own vertices; beta: all parts share the mesh's")
        ->type_name("NAME")
        ->check(CLI::IsMember({"standard", "beta"}))
        ->group(group);
    app.add_flag("--text", flags.text, "indented text without binary arrays, to be read by people")
        ->group(group);
    app.add_option("--log-level", flags.logLevel,
                   "what the importer's log keeps: ERROR, WARNING, INFO, DEBUG, DEBUG1 to DEBUG4, "
                   "NONE (all)")
        ->type_name("LEVEL")
        ->transform(CLI::IsMember(
            {"ERROR", "WARNING", "INFO", "DEBUG", "DEBUG1", "DEBUG2", "DEBUG3", "DEBUG4", "NONE"},
            CLI::ignore_case))
        ->group(group);
}

ImportArgs encode(const Flags& flags)
{
    ImportArgs settings; // holds the version that the importer expects of its caller
    if (flags.frame) {
        settings.setInt(FRAME, *flags.frame);
    }
    if (flags.keepHierarchy) {
        settings.setBool(COLLAPSE_HIERARCHY, false);
    }
    const struct {
        bool isGiven;
        ImportKey key;
    } switches[] = {{flags.splitLayers, SPLIT_LAYERS},
                    {flags.uniqueMaterials, UNIQUE_MATERIALS},
                    {flags.includeNurbs, INCLUDE_NURBS},
                    {flags.smoothCurves, SMOOTH_CURVES},
                    {flags.text, DEBUGOBX}};
    for (const auto& [isGiven, key] : switches) {
        if (isGiven) {
            settings.setBool(key, true);
        }
    }
    if (flags.noTessellate) {
        settings.setBool(TESSELLATE, false);
    }
    if (flags.curveRadius) {
        settings.setDouble(CURVERADIUS, *flags.curveRadius);
    }
    if (flags.extractor == "beta") {
        settings.setString(EXPERIMENTAL, "beta");
    }
    if (!flags.logLevel.empty()) {
        settings.setString(LOGLEVEL, flags.logLevel);
    }
    return settings;
}

} // namespace

std::optional<Options> readOptions(int argc, char** argv, int& exitStatus)
{
    Options options;
    Flags flags;
    CLI::App app(kAbout, "maya2vistrel");
    app.footer(kFooter);
    app.allow_windows_style_options(false); // a path may begin with a slash on every system
    app.set_version_flag("--version", "maya2vistrel 0.1.0");
    declareFiles(app, options);
    declareSettings(app, flags);
    try {
        app.parse(argc, argv);
        if (flags.frame && *flags.frame == -1) {
            throw CLI::ValidationError("--frame",
                                       "-1 means \"no frame\" to the importer; choose another one");
        }
    } catch (const CLI::ParseError& error) {
        const bool isHelp = error.get_exit_code() == 0;
        if (isHelp) {
            app.exit(error);
        } else {
            std::cerr << "maya2vistrel: " << error.what()
                      << "\nTry \"maya2vistrel --help\" for examples and options.\n";
        }
        exitStatus = isHelp ? kExitDone : kExitUsage;
        return std::nullopt;
    }
    options.settings = encode(flags);
    if (options.output.empty()) {
        options.output = outputPathOf(options.scene);
    }
    return options;
}
