// Opening scene files.
#pragma once

#include <maya/MStatus.h>
#include <maya/MString.h>

class MFileIO {
public:
    enum ReferenceMode { kLoadDefault = 0, kLoadAllReferences = 1, kLoadNoReferences = 2 };

    /// Replaces the scene by a file's; the kind of file is told from its content. Fails when the
    /// file cannot be read, is of no known format or is cut short before any node, and then leaves
    /// a new scene. Everything else degrades with a warning on standard error. Referenced files are
    /// not read in any mode, and no version is refused.
    static MStatus open(const MString& fileName, const char* type = nullptr, bool force = false,
                        ReferenceMode referenceMode = kLoadDefault, bool ignoreVersion = false);
    /// The absolute path with forward slashes; ends in "untitled" before a file is opened.
    static MString currentFile();
};
