// An open scene made from text, and the text of what an importer writes and logs.
#pragma once

#include "importers/maya/src/Log.h"
#include "sceneapi/PassThroughFactory.h"
#include "sceneapi/orvScene_api_file.h"
#include "sceneapi/orvSceneapi_oo.h"

#include <maya/MFileIO.h>
#include <maya/MLibrary.h>
#include <maya/MString.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

/// The whole content of a stream, from its beginning.
inline std::string contentOf(std::FILE* stream)
{
    std::fflush(stream);
    std::rewind(stream);
    std::string text;
    char piece[4096];
    for (std::size_t count; (count = std::fread(piece, 1, sizeof piece, stream)) > 0;) {
        text.append(piece, count);
    }
    return text;
}

/// Opens scenes, and catches the log of level DEBUG4 in a file of its own.
class SceneFixture : public testing::Test {
protected:
    SceneFixture() : m_log(std::tmpfile()), m_formerLog(Output2FILE::Stream())
    {
        Output2FILE::Stream() = m_log;
        FILELog::ReportingLevel() = DEBUG4;
        m_folder = std::filesystem::temp_directory_path() /
                   ("plugin_maya_test_" + std::to_string(reinterpret_cast<std::uintptr_t>(this)));
        std::filesystem::create_directories(m_folder);
        MLibrary::initialize("test", false);
    }
    ~SceneFixture() override
    {
        Output2FILE::Stream() = m_formerLog;
        std::fclose(m_log);
        MLibrary::cleanup(0, false);
        std::error_code ignored;
        std::filesystem::remove_all(m_folder, ignored);
    }

    /// Writes `statements` after a scene's first lines; returns the file's path with forward
    /// slashes.
    std::string write(const std::string& statements, const std::string& name = "scene.ma",
                      const std::string& unit = "centimeter") const
    {
        const std::filesystem::path path = m_folder / name;
        std::ofstream(path, std::ios::binary)
            << "//Maya ASCII 2018 scene\nrequires maya \"2018\";\ncurrentUnit -l " << unit
            << " -a degree -t film;\n"
            << statements;
        return path.generic_string();
    }
    void open(const std::string& statements, const std::string& unit = "centimeter")
    {
        ASSERT_TRUE(MFileIO::open(write(statements, "scene.ma", unit).c_str(), nullptr, true,
                                  MFileIO::kLoadNoReferences, true));
    }
    std::string log() const { return contentOf(m_log); }
    bool logs(const std::string& text) const { return log().find(text) != std::string::npos; }

private:
    std::FILE* m_log;
    std::FILE* m_formerLog;
    std::filesystem::path m_folder;
};

/// An object layer over a file writer without binary arrays, and what it wrote.
class WrittenScene {
public:
    WrittenScene()
        : m_stream(std::tmpfile())
        , m_writer(std::make_unique<orvScene_api_file>(m_stream, false))
        , m_factory(m_writer.get())
        , m_layer(m_factory)
    {
    }
    ~WrittenScene()
    {
        m_writer.reset();
        std::fclose(m_stream);
    }
    orv::orvSceneapi_oo& layer() { return m_layer; }
    /// Everything after the prologue; the writer is finished afterwards.
    std::string text()
    {
        m_writer.reset();
        const std::string whole = contentOf(m_stream);
        const std::string prologue = "version 9\n\n";
        return whole.substr(whole.find(prologue) + prologue.size());
    }

private:
    std::FILE* m_stream;
    std::unique_ptr<orvScene_api_file> m_writer;
    orv::PassThroughFactory m_factory;
    orv::orvSceneapi_oo m_layer;
};

/// A unit quad of two materials' worth of statements: shape `name` below the transform `parent`.
inline std::string quadMesh(const std::string& name, const std::string& parent)
{
    return "createNode mesh -n \"" + name + "\" -p \"" + parent +
           "\";\n"
           "setAttr \".uvst[0].uvsn\" -type \"string\" \"map1\";\n"
           "setAttr -s 4 \".uvst[0].uvsp[0:3]\" -type \"float2\" 0 0 1 0 1 1 0 1;\n"
           "setAttr \".cuvs\" -type \"string\" \"map1\";\n"
           "setAttr -s 4 \".vt[0:3]\"  0 0 0 1 0 0 1 1 0 0 1 0;\n"
           "setAttr -s 4 \".ed[0:3]\"  0 1 0 1 2 0 2 3 0 3 0 0;\n"
           "setAttr -s 1 -ch 4 \".fc[0]\" -type \"polyFaces\" f 4 0 1 2 3 mu 0 4 0 1 2 3;\n";
}

/// Two quads side by side (faces 0 and 1), six vertices.
inline std::string twoQuadMesh(const std::string& name, const std::string& parent)
{
    return "createNode mesh -n \"" + name + "\" -p \"" + parent +
           "\";\n"
           "setAttr -s 6 \".vt[0:5]\"  0 0 0 1 0 0 2 0 0 0 1 0 1 1 0 2 1 0;\n"
           "setAttr -s 7 \".ed[0:6]\"  0 1 0 1 2 0 3 4 0 4 5 0 0 3 0 1 4 0 2 5 0;\n"
           "setAttr -s 2 -ch 8 \".fc[0:1]\" -type \"polyFaces\" f 4 0 5 -3 -5 f 4 1 6 -4 -6;\n";
}
