// Questions and orders to the program as a whole.
#pragma once

#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MVector.h>

class MDoubleArray;
class MIntArray;
class MStringArray;
class MTime;

class MGlobal {
public:
    /// Two commands are known: "ls -shapes" and "currentUnit -query -linear". Anything else fails,
    /// and so does a result that does not fit its receiver, which then stays as it was. The flags
    /// change nothing: nothing is displayed, nothing undone.
    static MStatus executeCommand(const MString& command, bool displayEnabled = false,
                                  bool undoEnabled = false);
    static MStatus executeCommand(const MString& command, int& result, bool displayEnabled = false,
                                  bool undoEnabled = false);
    static MStatus executeCommand(const MString& command, MIntArray& result,
                                  bool displayEnabled = false, bool undoEnabled = false);
    static MStatus executeCommand(const MString& command, double& result,
                                  bool displayEnabled = false, bool undoEnabled = false);
    static MStatus executeCommand(const MString& command, MDoubleArray& result,
                                  bool displayEnabled = false, bool undoEnabled = false);
    static MStatus executeCommand(const MString& command, MString& result,
                                  bool displayEnabled = false, bool undoEnabled = false);
    /// A single text is an array of one.
    static MStatus executeCommand(const MString& command, MStringArray& result,
                                  bool displayEnabled = false, bool undoEnabled = false);

    /// Sets the scene's time; a number counts in the working unit.
    static MStatus viewFrame(const MTime& time);
    static MStatus viewFrame(double time);

    /// (0, 1, 0) or (0, 0, 1).
    static MVector upAxis(MStatus* ReturnStatus = nullptr);

    /// Lines "Warning: text", "Error: text" and "text" on standard error.
    static void displayWarning(const MString& text);
    static void displayError(const MString& text);
    static void displayInfo(const MString& text);

    static int apiVersion();
};
