// What the command's exit status says.
#pragma once

enum ExitCode : int {
    kExitDone = 0,
    kExitUsage = 2,    ///< the command line makes no sense
    kExitInput = 3,    ///< the scene is missing or cannot be read
    kExitScene = 4,    ///< the file is no Maya scene, or a damaged one
    kExitOutput = 6,   ///< the result could not be written
    kExitImporter = 7, ///< the importer could not be started, or died
};
