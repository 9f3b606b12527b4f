// A scene of a test: its text written to a file and opened through the API, closed when it goes.
#pragma once

#include <maya/MDagPath.h>
#include <maya/MObject.h>
#include <maya/MPlug.h>
#include <maya/MStatus.h>
#include <maya/MString.h>

#include <filesystem>
#include <string>

class OpenedScene {
public:
    /// Begins a session and opens `statements`, with the lines that open every file before them;
    /// without any, a scene of one empty transform.
    explicit OpenedScene(const std::string& statements = "");
    ~OpenedScene();
    OpenedScene(const OpenedScene&) = delete;
    OpenedScene& operator=(const OpenedScene&) = delete;

    /// What opening gave; what went to standard error meanwhile.
    MStatus status;
    std::string messages;
    std::filesystem::path file;
};

/// A file with exactly this text, and opening it in the running session.
std::filesystem::path writeFile(const std::string& name, const std::string& text);
MStatus openFile(const std::filesystem::path& file);
MString utf8(const std::filesystem::path& path);

/// The path of a full path name, the node and the plug of a name; null ones when there is none.
MDagPath pathNamed(const std::string& fullPathName);
MObject nodeNamed(const std::string& name);
MPlug plugNamed(const std::string& node, const std::string& attribute);

/// Two unit squares side by side in the plane z = 0, as a transform "pair" with a mesh "pairShape":
/// face 0 is 0 1 2 3, face 1 is 1 4 5 2. `extra`: statements about the mesh.
std::string pairOfSquares(const std::string& extra = "");

inline std::string text(const MString& string)
{
    return string.asUTF8();
}
