// maya2vistrel: what people type to convert a scene.
#include "apps/maya2vistrel/Options.h"
#include "apps/maya2vistrel/conversion.h"
#include "apps/maya2vistrel/exitStatus.h"
#include "platform/programMain.h"

#include <cstdio>
#include <exception>

int programMain(int argc, char** argv)
{
    try {
        int exitStatus = kExitDone;
        const std::optional<Options> options = readOptions(argc, argv, exitStatus);
        return options ? convert(*options) : exitStatus;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "maya2vistrel: %s\n", error.what());
        return kExitOutput;
    }
}
