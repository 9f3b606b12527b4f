// The beginning and the end of everything: a scene exists between `initialize` and `cleanup`.
#pragma once

#include <maya/MStatus.h>

class MLibrary {
public:
    /// Begins a new scene. Prints nothing and leaves the current directory alone. The name and the
    /// flags change nothing here: there are no licences and no scripts.
    static MStatus initialize(const char* applicationName, bool useBatchLicense = false);
    static MStatus initialize(bool wantScriptOutput, const char* applicationName,
                              bool useBatchLicense = false);

    /// Ends the scene. With `exitWhenDone` also the process, with that status: objects with static
    /// life are destroyed, those of functions still running are not.
    static void cleanup(int exitStatus = 0, bool exitWhenDone = true);
};
