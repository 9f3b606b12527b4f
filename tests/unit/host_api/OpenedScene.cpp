#include "tests/unit/host_api/OpenedScene.h"

#include <maya/MFileIO.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MItDag.h>
#include <maya/MItDependencyNodes.h>
#include <maya/MLibrary.h>

#include <gtest/gtest.h>

#include <fstream>

namespace {

std::string uniqueName()
{
    static int count = 0;
    const auto* test = testing::UnitTest::GetInstance()->current_test_info();
    return std::string("host_api_") + test->test_suite_name() + "_" + test->name() + "_" +
           std::to_string(++count) + ".ma";
}

} // namespace

OpenedScene::OpenedScene(const std::string& statements)
{
    MLibrary::initialize("test", false);
    // A file without any node is no scene.
    const std::string body =
        statements.empty() ? "createNode transform -n \"only\";\n" : statements;
    file = writeFile(uniqueName(), "//Maya ASCII 2018 scene\nrequires maya \"2018\";\n" + body);
    testing::internal::CaptureStderr();
    status = openFile(file);
    messages = testing::internal::GetCapturedStderr();
}

OpenedScene::~OpenedScene()
{
    MLibrary::cleanup(0, false);
    std::error_code ignored;
    std::filesystem::remove(file, ignored);
}

std::filesystem::path writeFile(const std::string& name, const std::string& text)
{
    const std::filesystem::path path = std::filesystem::temp_directory_path() / name;
    std::ofstream(path, std::ios::binary) << text;
    return path;
}

MString utf8(const std::filesystem::path& path)
{
    const std::u8string name = path.u8string();
    return MString(reinterpret_cast<const char*>(name.c_str()));
}

MStatus openFile(const std::filesystem::path& file)
{
    return MFileIO::open(utf8(file), nullptr, true, MFileIO::kLoadNoReferences, true);
}

MDagPath pathNamed(const std::string& fullPathName)
{
    for (MItDag walk; !walk.isDone(); walk.next()) {
        MDagPath path;
        if (walk.getPath(path) && path.fullPathName() == fullPathName.c_str()) {
            return path;
        }
    }
    return MDagPath();
}

MObject nodeNamed(const std::string& name)
{
    for (MItDependencyNodes nodes; !nodes.isDone(); nodes.next()) {
        if (MFnDependencyNode(nodes.thisNode()).name() == name.c_str()) {
            return nodes.thisNode();
        }
    }
    return MObject();
}

MPlug plugNamed(const std::string& node, const std::string& attribute)
{
    return MFnDependencyNode(nodeNamed(node)).findPlug(attribute.c_str(), true);
}

std::string pairOfSquares(const std::string& extra)
{
    return "createNode transform -n \"pair\";\n"
           "createNode mesh -n \"pairShape\" -p \"pair\";\n"
           "\tsetAttr -s 6 \".vt[0:5]\"  0 0 0 1 0 0 1 1 0 0 1 0 2 0 0 2 1 0;\n"
           "\tsetAttr -s 7 \".ed[0:6]\"  0 1 1 1 2 1 2 3 1 3 0 1 1 4 1 4 5 1 5 2 1;\n"
           "\tsetAttr -s 2 -ch 8 \".fc[0:1]\" -type \"polyFaces\"\n"
           "\t\tf 4 0 1 2 3\n\t\tf 4 4 5 6 -2;\n" +
           extra;
}
