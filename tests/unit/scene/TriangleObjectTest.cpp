#include "scene/TriangleObject.h"

#include "scene/Diffuse.h"
#include "tests/unit/scene/SceneText.h"

#include <gtest/gtest.h>

#include <vector>

namespace orv {
namespace {

using test::bytes;
using test::Layout;
using test::SceneText;
using test::written;

const std::string kDefaultMaterial = "material \"default\" {\n"
                                     "surface \"orv_diffuse\" {\n"
                                     "\"diffuse\" 0.75 0.5 0.5,\n"
                                     "}\n"
                                     "flags 4096\n"
                                     "}\n";

/// Vertices (0 0 0), (1 0 0), (0 1 0) and one triangle over them.
void fillOneTriangle(TriangleObject& mesh)
{
    mesh.addVertex(0, 0, 0);
    mesh.addVertex(1, 0, 0);
    mesh.addVertex(0, 1, 0);
    mesh.addTriangle(0, 1, 2);
}

TEST(TriangleObject, StartsEmptyWithTheDefaultMaterial)
{
    const TriangleObject mesh("m");
    EXPECT_EQ(mesh.getName(), "m");
    EXPECT_TRUE(mesh.vertices().empty());
    EXPECT_TRUE(mesh.triangles().empty());
    EXPECT_TRUE(mesh.uvs().empty());
    EXPECT_TRUE(mesh.normals().empty());
    EXPECT_TRUE(mesh.hasNoError());
    EXPECT_EQ(mesh.memorySize(), 0U);
    EXPECT_FALSE(mesh.isDefined());

    const auto material = std::dynamic_pointer_cast<Diffuse>(mesh.getMaterial());
    ASSERT_NE(material, nullptr);
    EXPECT_EQ(material->getName(), "default");
    EXPECT_EQ(material->getColor(), (Float3{0.75F, 0.5F, 0.5F}));
    EXPECT_FALSE(material->isDefined());
}

TEST(TriangleObject, WritesAnObjectWithGeometryAndMaterial)
{
    TriangleObject mesh("m");
    fillOneTriangle(mesh);
    EXPECT_EQ(written(mesh), "object \"m\" {\n"
                             "geometry \"triangles\" {\n"
                             "\"vertices\" [ 0 0 0,1 0 0,0 1 0 ] ,\n"
                             "\"triangles\" [ 0,1,2 ] ,\n"
                             "}\n" +
                                 kDefaultMaterial + "}\n");
}

TEST(TriangleObject, IndentsByDepth)
{
    TriangleObject mesh("m");
    fillOneTriangle(mesh);
    // the shader's text has an indentation of its own, which that of the line adds to
    EXPECT_EQ(written(mesh, Layout::Indented), "object \"m\" {\n"
                                               " geometry \"triangles\" {\n"
                                               "  \"vertices\" [ 0 0 0,1 0 0,0 1 0 ] ,\n"
                                               "  \"triangles\" [ 0,1,2 ] ,\n"
                                               " }\n"
                                               " material \"default\" {\n"
                                               "  surface   \"orv_diffuse\" {\n"
                                               "   \"diffuse\" 0.75 0.5 0.5,\n"
                                               "  }  \n"
                                               "  flags 4096\n"
                                               " }\n"
                                               "}\n");
}

TEST(TriangleObject, WritesTheArraysWithIndicesBeforeUvAndNormals)
{
    TriangleObject mesh("m");
    fillOneTriangle(mesh);
    mesh.addVertexColor(1, 0, 0);
    mesh.addVertexColor(0, 1, 0);
    mesh.addVertexColor(0, 0, 1);
    mesh.addNormal(0, 0, 1);
    mesh.addNormalIndices(0, 0, 0);
    mesh.addUV(0.5F, 0.25F);
    mesh.addUV(1, 0);
    mesh.addUVIndices(0, 1, 1);
    EXPECT_EQ(written(mesh), "object \"m\" {\n"
                             "geometry \"triangles\" {\n"
                             "\"vertices\" [ 0 0 0,1 0 0,0 1 0 ] ,\n"
                             "\"triangles\" [ 0,1,2 ] ,\n"
                             "\"triangles_uv\" [ 0,1,1 ] ,\n"
                             "\"uv_tex\" [ 0.5,0.25,1,0 ] ,\n"
                             "\"triangles_norm\" [ 0,0,0 ] ,\n"
                             "\"normals\" [ 0 0 1 ] ,\n"
                             "\"vcolors\" [ 1 0 0,0 1 0,0 0 1 ] ,\n"
                             "}\n" +
                                 kDefaultMaterial + "}\n");
    EXPECT_TRUE(mesh.hasNoError());
}

TEST(TriangleObject, WritesVerticesNormalsAndColoursAsTriplesInBinary)
{
    TriangleObject mesh("m");
    mesh.addVertex(0, 1, 2);
    mesh.addTriangle(0, 0, -1);
    mesh.addNormal(0, 0, 1);
    mesh.addUV(0.5F, 1);
    mesh.addUVIndices(0, 0, 0);
    mesh.addNormalIndices(0, 0, 0);
    mesh.addVertexColor(0, 0, 0);
    // Each block is 01 02 03, a letter and a 32-bit count, lowest byte first; the count of triples
    // is that of their floats. 0.5, 1 and 2 are 3f000000, 3f800000 and 40000000 in hexadecimal.
    const std::string zero(4, '\0');
    const std::string one = bytes("\x00\x00\x80\x3f", 4);
    const std::string triple = bytes("\x01\x02\x03"
                                     "c"
                                     "\x03\x00\x00\x00",
                                     8);
    const std::string threeInts = bytes("\x01\x02\x03"
                                        "i"
                                        "\x03\x00\x00\x00",
                                        8);
    const std::string twoFloats = bytes("\x01\x02\x03"
                                        "f"
                                        "\x02\x00\x00\x00",
                                        8);
    EXPECT_EQ(written(mesh, Layout::Binary), "object \"m\" {\n"
                                             "geometry \"triangles\" {\n"
                                             "\"vertices\" [ " +
                                                 triple + zero + one +
                                                 bytes("\x00\x00\x00\x40", 4) +
                                                 "] ,\n"
                                                 "\"triangles\" [ " +
                                                 threeInts + zero + zero + "\xff\xff\xff\xff" +
                                                 "] ,\n"
                                                 "\"triangles_uv\" [ " +
                                                 threeInts + zero + zero + zero +
                                                 "] ,\n"
                                                 "\"uv_tex\" [ " +
                                                 twoFloats + bytes("\x00\x00\x00\x3f", 4) + one +
                                                 "] ,\n"
                                                 "\"triangles_norm\" [ " +
                                                 threeInts + zero + zero + zero +
                                                 "] ,\n"
                                                 "\"normals\" [ " +
                                                 triple + zero + zero + one +
                                                 "] ,\n"
                                                 "\"vcolors\" [ " +
                                                 triple + zero + zero + zero +
                                                 "] ,\n"
                                                 "}\n" +
                                                 kDefaultMaterial + "}\n");
}

TEST(TriangleObject, LeavesAnIncompleteLastPointOut)
{
    TriangleObject mesh("m");
    const float values[] = {1, 2, 3, 4, 5};
    mesh.setVertices(values, 5);
    mesh.addTriangle(0, 0, 0);
    EXPECT_NE(written(mesh).find("\"vertices\" [ 1 2 3 ] ,\n"), std::string::npos);
}

TEST(TriangleObject, WithoutTrianglesWritesNothingButTheErrorDirective)
{
    TriangleObject mesh("m");
    mesh.addVertex(0, 0, 0);
    EXPECT_FALSE(mesh.validate());
    EXPECT_EQ(written(mesh), "#error \"No triangles defined\"\n");
}

TEST(TriangleObject, RunsMessagesTogetherWithoutABlank)
{
    TriangleObject mesh("m");
    mesh.addVertex(0, 0, 0);
    mesh.addNormalIndices(0, 0, 0);
    mesh.addUVIndices(0, 0, 0);
    mesh.addVertexColor(0, 0, 0);
    mesh.addVertexColor(0, 0, 0);
    EXPECT_EQ(written(mesh), "#error \"No normals defined for indexNo uvs defined for index"
                             "VetexColor count does not match number of vertices"
                             "No triangles defined\"\n");
}

TEST(TriangleObject, ComplainsOfUvsThatAreNotPerVertexInRawFloatCounts)
{
    TriangleObject mesh("m");
    const float zeros[12] = {};
    mesh.setVertices(zeros, 12);
    mesh.setUVs(zeros, 6);
    mesh.addTriangle(0, 1, 2);
    EXPECT_TRUE(mesh.validate());
    EXPECT_EQ(mesh.getError(), "Number of uvs(6)  does not match vertex count(12)");
    EXPECT_FALSE(mesh.hasNoError());
}

TEST(TriangleObject, AcceptsAUvPairPerVertex)
{
    TriangleObject mesh("m");
    fillOneTriangle(mesh);
    mesh.addUV(0, 0);
    mesh.addUV(1, 0);
    mesh.addUV(0, 1);
    EXPECT_TRUE(mesh.validate());
    EXPECT_EQ(mesh.getError(), "");
}

TEST(TriangleObject, ComplainsOfAUvIndexCountThatDiffersFromTheTriangles)
{
    TriangleObject mesh("m");
    fillOneTriangle(mesh);
    mesh.addUV(0, 0);
    mesh.addUVIndices(0, 0, 0);
    mesh.addUVIndices(0, 0, 0);
    EXPECT_TRUE(mesh.validate());
    EXPECT_EQ(mesh.getError(), "UV index count does not match triangle count");
}

TEST(TriangleObject, ComplainsOfNormalIndicesWithBothCountsAndIsWrittenAllTheSame)
{
    TriangleObject mesh("m");
    fillOneTriangle(mesh);
    mesh.addTriangle(2, 1, 0);
    mesh.addNormal(0, 0, 1);
    for (int i = 0; i < 3; ++i) {
        mesh.addNormalIndices(0, 0, 0);
    }
    const std::string text = written(mesh);
    EXPECT_EQ(mesh.getError(), "Normals count does not match number of triangles 9 vs 6");
    EXPECT_EQ(text.find("object \"m\" {\n"), 0U);
    const std::string end =
        "}\n#error \"Normals count does not match number of triangles 9 vs 6\"\n";
    ASSERT_GT(text.size(), end.size());
    EXPECT_EQ(text.substr(text.size() - end.size()), end);
}

TEST(TriangleObject, ComplainsOfNormalsThatAreNotPerVertex)
{
    TriangleObject mesh("m");
    fillOneTriangle(mesh);
    mesh.addNormal(0, 0, 1);
    EXPECT_TRUE(mesh.validate());
    EXPECT_EQ(mesh.getError(), "Number of normals does not equal number of vertices");
}

TEST(TriangleObject, ComplainsOfIndicesWithoutNormalsAndUvs)
{
    TriangleObject mesh("m");
    fillOneTriangle(mesh);
    mesh.addNormalIndices(0, 0, 0);
    EXPECT_TRUE(mesh.validate());
    EXPECT_EQ(mesh.getError(), "No normals defined for index");
    mesh.addUVIndices(0, 0, 0);
    EXPECT_TRUE(mesh.validate());
    EXPECT_EQ(mesh.getError(), "No normals defined for indexNo uvs defined for index");
}

TEST(TriangleObject, ComplainsOfColoursThatAreNotPerVertex)
{
    TriangleObject mesh("m");
    fillOneTriangle(mesh);
    mesh.addVertexColor(1, 1, 1);
    EXPECT_TRUE(mesh.validate());
    EXPECT_EQ(mesh.getError(), "VetexColor count does not match number of vertices");
}

TEST(TriangleObject, ReplacesTheComplaintsWithEveryValidation)
{
    TriangleObject mesh("m");
    EXPECT_FALSE(mesh.validate());
    EXPECT_EQ(mesh.getError(), "No triangles defined");
    fillOneTriangle(mesh);
    EXPECT_TRUE(mesh.validate());
    EXPECT_TRUE(mesh.hasNoError());
}

TEST(TriangleObject, DefinesItselfWithTheIdBeforeTheGeometryAndWithoutMaterial)
{
    SceneText scene;
    TriangleObject mesh("m");
    fillOneTriangle(mesh);
    mesh.define(scene.oo());
    EXPECT_EQ(scene.text(), "#define object \"m\" {\n"
                            "id 1\n"
                            "geometry \"triangles\" {\n"
                            "\"vertices\" [ 0 0 0,1 0 0,0 1 0 ] ,\n"
                            "\"triangles\" [ 0,1,2 ] ,\n"
                            "}\n"
                            "}\n");
    EXPECT_TRUE(mesh.isDefined());
    EXPECT_EQ(mesh.definitionId(), 1U);
}

TEST(TriangleObject, RefersToItsDefinitionInEveryWriteAfterIt)
{
    SceneText scene;
    TriangleObject first("first");
    fillOneTriangle(first);
    first.define(scene.oo());
    TriangleObject mesh("m");
    fillOneTriangle(mesh);
    mesh.define(scene.oo());
    const std::size_t before = scene.text().size();
    mesh.write(scene.oo());
    mesh.write(scene.oo());
    const std::string reference = "object \"m\" {\n"
                                  "geometry \"instance\" {\n"
                                  "\"id\" 2,\n"
                                  "}\n" +
                                  kDefaultMaterial + "}\n";
    EXPECT_EQ(scene.text().substr(before), reference + reference);
}

TEST(TriangleObject, WritesTheLower32BitsOfItsIdAsASignedNumber)
{
    TriangleObject mesh("m");
    mesh.setDefinitionId(0x1FFFFFFFFULL);
    EXPECT_NE(written(mesh).find("geometry \"instance\" {\n\"id\" -1,\n}\n"), std::string::npos);
}

TEST(TriangleObject, DefinesAnEmptyMeshWithoutAnyComplaint)
{
    SceneText scene;
    TriangleObject mesh("m");
    mesh.define(scene.oo());
    mesh.write(scene.oo());
    EXPECT_EQ(scene.text(), "#define object \"m\" {\n"
                            "id 1\n"
                            "geometry \"triangles\" {\n"
                            "\"vertices\" [ ] ,\n"
                            "\"triangles\" [ ] ,\n"
                            "}\n"
                            "}\n"
                            "object \"m\" {\n"
                            "geometry \"instance\" {\n"
                            "\"id\" 1,\n"
                            "}\n" +
                                kDefaultMaterial + "}\n");
}

TEST(TriangleObject, WritesAnEmptyDefinitionWithANewIdWhenDefinedAgain)
{
    SceneText scene;
    TriangleObject mesh("m");
    fillOneTriangle(mesh);
    mesh.define(scene.oo());
    const std::size_t before = scene.text().size();
    mesh.define(scene.oo());
    EXPECT_EQ(scene.text().substr(before), "#define object \"m\" {\n"
                                           "id 2\n"
                                           "geometry \"triangles\" {\n"
                                           "\"vertices\" [ ] ,\n"
                                           "\"triangles\" [ ] ,\n"
                                           "}\n"
                                           "}\n");
    EXPECT_EQ(mesh.definitionId(), 2U);
}

TEST(TriangleObject, EmptiesItsArraysWhenDefined)
{
    SceneText scene;
    TriangleObject mesh("m");
    fillOneTriangle(mesh);
    EXPECT_EQ(mesh.memorySize(), 48U);
    mesh.define(scene.oo());
    EXPECT_EQ(mesh.memorySize(), 0U);
    EXPECT_EQ(mesh.vertices().capacity(), 0U);
    EXPECT_EQ(mesh.triangles().capacity(), 0U);
}

TEST(TriangleObject, ValidatesAtOnceWhenDefinedAndKeepsTheOldComplaints)
{
    SceneText scene;
    TriangleObject mesh("m");
    fillOneTriangle(mesh);
    mesh.addVertexColor(0, 0, 0);
    EXPECT_TRUE(mesh.validate());
    const std::string complaint = "VetexColor count does not match number of vertices";
    mesh.define(scene.oo());
    EXPECT_TRUE(mesh.validate());
    EXPECT_EQ(mesh.getError(), complaint);

    const std::size_t before = scene.text().size();
    mesh.write(scene.oo());
    EXPECT_EQ(scene.text().substr(before), "object \"m\" {\n"
                                           "geometry \"instance\" {\n"
                                           "\"id\" 1,\n"
                                           "}\n" +
                                               kDefaultMaterial + "}\n#error \"" + complaint +
                                               "\"\n");
}

TEST(TriangleObject, ClearDataKeepsStorageAndComplaints)
{
    TriangleObject mesh("m");
    fillOneTriangle(mesh);
    mesh.addNormal(0, 0, 1);
    mesh.addNormalIndices(0, 0, 0);
    mesh.addUV(0, 0);
    mesh.addUVIndices(0, 0, 0);
    mesh.addVertexColor(0, 0, 0);
    mesh.validate();
    const std::string complaint = mesh.getError();
    EXPECT_FALSE(complaint.empty());
    const std::size_t capacity = mesh.vertices().capacity();
    mesh.clearData();
    EXPECT_EQ(mesh.memorySize(), 0U);
    EXPECT_EQ(mesh.vertices().capacity(), capacity);
    EXPECT_EQ(mesh.getError(), complaint);
}

TEST(TriangleObject, CountsFourBytesForEveryValue)
{
    TriangleObject mesh("m");
    fillOneTriangle(mesh);          // 9 floats, 3 indices
    mesh.addNormal(0, 0, 1);        // 3
    mesh.addNormalIndices(0, 0, 0); // 3
    mesh.addUV(0, 0);               // 2
    mesh.addUVIndices(0, 0, 0);     // 3
    mesh.addVertexColor(0, 0, 0);   // 3
    EXPECT_EQ(mesh.memorySize(), 4U * 26U);
}

TEST(TriangleObject, SettersReplaceTheWholeArray)
{
    TriangleObject mesh("m");
    fillOneTriangle(mesh);
    mesh.addNormal(0, 0, 1);
    mesh.addUV(0, 0);
    const float floats[] = {1, 2, 3};
    const std::int32_t indices[] = {4, 5, 6};
    mesh.setVertices(floats, 3);
    mesh.setNormals(floats, 2);
    mesh.setUVs(floats, 1);
    mesh.setTriangles(indices, 3);
    EXPECT_EQ(mesh.vertices(), (std::vector<float>{1, 2, 3}));
    EXPECT_EQ(mesh.normals(), (std::vector<float>{1, 2}));
    EXPECT_EQ(mesh.uvs(), (std::vector<float>{1}));
    EXPECT_EQ(mesh.triangles(), (std::vector<std::int32_t>{4, 5, 6}));
    mesh.setVertices(nullptr, 0);
    EXPECT_TRUE(mesh.vertices().empty());
}

TEST(TriangleObject, TakesVectorsOverWithoutACopy)
{
    TriangleObject mesh("m");
    std::vector<float> vertices{1, 2, 3};
    std::vector<float> normals{4, 5, 6};
    std::vector<float> uvs{7, 8};
    std::vector<std::int32_t> triangles{0, 0, 0};
    const float* vertexData = vertices.data();
    const float* normalData = normals.data();
    const float* uvData = uvs.data();
    const std::int32_t* triangleData = triangles.data();
    mesh.setVertices(std::move(vertices));
    mesh.setNormals(std::move(normals));
    mesh.setUVs(std::move(uvs));
    mesh.setTriangles(std::move(triangles));
    EXPECT_EQ(mesh.vertices().data(), vertexData);
    EXPECT_EQ(mesh.normals().data(), normalData);
    EXPECT_EQ(mesh.uvs().data(), uvData);
    EXPECT_EQ(mesh.triangles().data(), triangleData);
    EXPECT_EQ(mesh.memorySize(), 44U);
}

TEST(TriangleObject, ChecksIndicesAgainstTheNumberOfFloats)
{
    TriangleObject mesh("m");
    EXPECT_TRUE(mesh.checkIndices());
    fillOneTriangle(mesh);
    EXPECT_TRUE(mesh.checkIndices());
    mesh.addTriangle(3, 8, 0); // 3 vertices, 9 floats
    EXPECT_TRUE(mesh.checkIndices());
    mesh.addTriangle(9, 0, 0);
    EXPECT_FALSE(mesh.checkIndices());
}

TEST(TriangleObject, RejectsANegativeIndexInTheCheckOnly)
{
    TriangleObject mesh("m");
    fillOneTriangle(mesh);
    mesh.addTriangle(0, 1, -1);
    EXPECT_FALSE(mesh.checkIndices());
    EXPECT_TRUE(mesh.validate());
    EXPECT_TRUE(mesh.hasNoError());
}

TEST(TriangleObject, WritesTheMaterialThatWasSet)
{
    TriangleObject mesh("m");
    fillOneTriangle(mesh);
    auto red = std::make_shared<Diffuse>("red");
    red->setColor(1, 0, 0);
    mesh.setMaterial(red);
    EXPECT_NE(written(mesh).find("}\nmaterial \"red\" {\n"
                                 "surface \"orv_diffuse\" {\n"
                                 "\"diffuse\" 1 0 0,\n"
                                 "}\n"
                                 "flags 4096\n"
                                 "}\n}\n"),
              std::string::npos);
}

TEST(TriangleObject, IsWrittenWithoutAMaterialWhenThatIsTakenAway)
{
    TriangleObject mesh("m");
    fillOneTriangle(mesh);
    mesh.setMaterial(nullptr);
    EXPECT_EQ(written(mesh), "object \"m\" {\n"
                             "geometry \"triangles\" {\n"
                             "\"vertices\" [ 0 0 0,1 0 0,0 1 0 ] ,\n"
                             "\"triangles\" [ 0,1,2 ] ,\n"
                             "}\n"
                             "}\n");
}

} // namespace
} // namespace orv
