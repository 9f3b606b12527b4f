// The command line of maya2vistrel.
#pragma once

#include "importers/maya/src/ImportArgs.h"

#include <optional>
#include <string>

struct Options {
    std::string scene;
    std::string output;     ///< "-": standard output
    std::string reportFile; ///< empty: none
    std::string importer;   ///< empty: the one beside this program
    bool quiet = false;
    ImportArgs settings; ///< for the importer, without the two file names
};

/// Reads the arguments (UTF-8). Without a value the command is over with `exitStatus`: help was
/// shown, or a message on standard error says what does not fit.
std::optional<Options> readOptions(int argc, char** argv, int& exitStatus);
