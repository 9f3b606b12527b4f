#include "apps/maya2vistrel/SceneStream.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace {

using Progress = std::vector<std::pair<std::string, double>>;

/// Feeds `text` in pieces of `step` bytes.
Progress progressOf(std::string_view text, std::size_t step)
{
    Progress seen;
    SceneStream stream(
        [&](std::string_view name, double share) { seen.emplace_back(name, share); });
    for (std::size_t i = 0; i < text.size(); i += step) {
        stream.feed(text.substr(i, step));
    }
    return seen;
}

SceneStream passed(std::string_view text)
{
    SceneStream stream([](std::string_view, double) {});
    stream.feed(text);
    return stream;
}

/// A binary list of two floats whose bytes look like statements.
std::string treacherousArray()
{
    std::string bytes = "\"uv_tex\" [ ";
    bytes += std::string("\x01\x02\x03", 3) + "f" + std::string("\x03\0\0\0", 4);
    bytes += "\ncamera \"x\"\n"; // 12 bytes: three floats
    return bytes + "] ,\n";
}

} // namespace

TEST(SceneStream, TellsNameAndShareWhateverThePieces)
{
    const std::string text = "progress \"pCubeShape1\" 0.250\n\nprogress \"b c\" 1.000\n\n";
    const Progress expected = {{"pCubeShape1", 0.25}, {"b c", 1.0}};
    for (const std::size_t step : {1u, 2u, 7u, 1000u}) {
        EXPECT_EQ(progressOf(text, step), expected) << "pieces of " << step;
    }
}

TEST(SceneStream, StepsOverBinaryArrays)
{
    EXPECT_EQ(passed(treacherousArray()).cameraCount(), 0u);
    EXPECT_EQ(passed(treacherousArray() + "camera \"persp\" {\n").cameraCount(), 1u);
}

TEST(SceneStream, StepsOverArraysOfDoublesByEightBytesEach)
{
    const std::string header =
        "\"d\" [ " + std::string("\x01\x02\x03", 3) + "r" + std::string("\x02\0\0\0", 4);
    EXPECT_EQ(passed(header + "\ncamera \"x\"\n\n\n\n" + "] ,\n").cameraCount(), 0u);
}

TEST(SceneStream, KnowsThatASceneWasOpened)
{
    EXPECT_FALSE(passed("#print \"load\"\nversion 9\n\n").hasScene());
    EXPECT_TRUE(passed("load \"orvrtopt.so\" {\n").hasScene());
}

TEST(SceneStream, CountsWhatWasWritten)
{
    const std::string mesh = "geometry \"triangles\" {\n}\n}\n";
    const std::string text = "\n#define material \"wood\" {\n}\n#define object \"a\" {\nid 1\n" +
                             mesh + "#define object \"b\" {\nid 2\n" + mesh +
                             "#define object \"s\" {\nid 3\ngeometry \"nurbs\" {\n}\n}\n"
                             "\ngroup \"g\" {\nanimation \"g\" \"fbx_animation\" {\n}\n"
                             "object \"a\" {\ngeometry \"instance\" {\n\"id\" 1,\n}\n}\n"
                             "object \"\" {\n geometry \"orv_curves\" {\n}\n}\n}\n";
    const SceneStream stream = passed(text);
    EXPECT_EQ(stream.meshCount(), 2u);
    EXPECT_EQ(stream.materialCount(), 1u);
    EXPECT_EQ(stream.trackCount(), 1u);
    EXPECT_EQ(stream.hairCount(), 1u);
    EXPECT_EQ(stream.byteCount(), text.size());
}

TEST(SceneStream, SurvivesALineWithoutEnd)
{
    EXPECT_EQ(progressOf(std::string(100000, 'x') + "\nprogress \"a\" 0.500\n", 4096).size(), 1u);
}
