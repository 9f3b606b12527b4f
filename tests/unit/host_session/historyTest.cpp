// Chains of operations that make meshes, from statements to the shape.
//
// The cube of side 1 that all of them begin with, by its corner numbers: 0 (-x -y +z), 1 (+x -y
// +z), 2 (-x +y +z), 3 (+x +y +z), 4 (-x +y -z), 5 (+x +y -z), 6 (-x -y -z), 7 (+x -y -z); faces in
// order: front 0 1 3 2, top 2 3 5 4, back 4 5 7 6, bottom 6 7 1 0, right 1 7 5 3, left 6 0 2 4; 12
// edges.
#include "tests/support/OpenScene.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>

namespace {

using host::Vec3f;
using host::geometry::MeshData;
using MeshPointer = std::shared_ptr<const MeshData>;
using Faces = std::vector<std::uint32_t>;

class History : public test::OpenScene {
protected:
    /// Statements between a cube and the shape "m"; the last node is called "last".
    void openCube(const std::string& more)
    {
        open("createNode transform -n \"t\"; createNode mesh -n \"m\" -p \"t\";\n"
             "createNode polyCube -n \"cube\";\n" +
             more + "\nconnectAttr \"last.out\" \"m.i\";\n");
    }
    MeshPointer shape()
    {
        auto mesh = session.mesh(node("m"));
        EXPECT_TRUE(mesh != nullptr && host::geometry::isConsistent(*mesh));
        return mesh;
    }
    MeshPointer given(std::string_view name, std::string_view attribute = "output")
    {
        return session.value(plug(name, attribute)).data<MeshData>();
    }
    nlohmann::json told() const { return nlohmann::json::parse(session.report())["history"]; }
    std::string outcome() const { return told()[0]["outcome"]; }

    static Faces facesOf(const MeshData& mesh, std::int32_t id)
    {
        for (const host::geometry::FaceGroup& group : mesh.groups) {
            if (group.id == id) {
                return *group.faces;
            }
        }
        return {};
    }
    static std::vector<std::uint32_t> cornersOf(const MeshData& mesh, std::uint32_t face)
    {
        std::vector<std::uint32_t> vertices;
        for (auto at = mesh.topology->firstCorner(face); at < mesh.topology->endCorner(face);
             ++at) {
            vertices.push_back(mesh.topology->cornerVertex(at));
        }
        return vertices;
    }
};

TEST_F(History, MovesPointsAndSoftensEdgesOfACube)
{
    openCube(R"(createNode polyTweak -n "moved"; setAttr ".tk[1]" -type "float3" 1 0 0;
        createNode polySoftEdge -n "last"; setAttr ".ics" -type "componentList" 1 "e[*]"; setAttr ".a" 180;
        connectAttr "cube.out" "moved.ip"; connectAttr "moved.out" "last.ip";)");
    const auto mesh = shape();
    EXPECT_EQ((*mesh->points)[0], (Vec3f{-0.5F, -0.5F, 0.5F}));
    EXPECT_EQ((*mesh->points)[1], (Vec3f{1.5F, -0.5F, 0.5F}));
    EXPECT_EQ(cornersOf(*mesh, 4), (std::vector<std::uint32_t>{1, 7, 5, 3}));
    EXPECT_EQ(mesh->edgeFlags(), std::vector<std::uint8_t>(12, 1));
    EXPECT_EQ(given("cube")->edgeFlags(), std::vector<std::uint8_t>(12, 0));
    EXPECT_EQ(given("moved")->topology, given("cube")->topology); // shared, not copied
    EXPECT_EQ(mesh->points, given("moved")->points);
    EXPECT_EQ(outcome(), "computed");
}

/// A group of the faces top and back; then the front goes, the other faces move up; in front of
/// them comes a second cube with six faces and the same group on its left; at last all faces are
/// cut in two.
TEST_F(History, CarriesFaceGroupsThroughOperations)
{
    openCube(
        R"(createNode groupParts -n "part"; setAttr ".ic" -type "componentList" 1 "f[1:2]"; setAttr ".gi" 7;
        createNode deleteComponent -n "gone"; setAttr ".dc" -type "componentList" 1 "f[0]";
        createNode polyCube -n "other";
        createNode groupParts -n "otherPart"; setAttr ".ic" -type "componentList" 1 "f[5]"; setAttr ".gi" 7;
        createNode polyUnite -n "both";
        createNode polyTriangulate -n "last"; setAttr ".ics" -type "componentList" 1 "f[*]";
        connectAttr "cube.out" "part.ig"; connectAttr "part.og" "gone.ig"; connectAttr "gone.og" "both.ip[1]";
        connectAttr "other.out" "otherPart.ig"; connectAttr "otherPart.og" "both.ip[0]";
        connectAttr "both.out" "last.ip";)");
    const auto mesh = shape();
    EXPECT_EQ(facesOf(*given("part", "outputGeometry"), 7), (Faces{1, 2}));
    EXPECT_EQ(facesOf(*given("gone", "outputGeometry"), 7), (Faces{0, 1}));
    EXPECT_EQ(facesOf(*given("both"), 7), (Faces{5, 6, 7}));
    EXPECT_EQ(facesOf(*mesh, 7), (Faces{10, 11, 12, 13, 14, 15}));
    EXPECT_EQ(mesh->topology->faceCount(), 22U);
    EXPECT_EQ(mesh->topology->vertexCount, 16U);
    EXPECT_EQ(outcome(), "computed");
}

/// No host knows the type: its input passes, and what comes behind still works on it.
TEST_F(History, GoesOnBehindAnOperationThatIsPassedBy)
{
    openCube(R"(createNode polyTweak -n "first"; setAttr ".tk[0]" -type "float3" 0 5 0;
        createNode polyOfAPlugin -n "strange";
        createNode polyTweak -n "last"; setAttr ".tk[0]" -type "float3" 0 0 2;
        connectAttr "cube.out" "first.ip"; connectAttr "first.out" "strange.ip"; connectAttr "strange.out" "last.ip";)");
    EXPECT_EQ((*shape()->points)[0], (Vec3f{-0.5F, 4.5F, 2.5F}));
    EXPECT_EQ(told(), nlohmann::json::parse(R"([{"shape": "|t|m", "outcome": "approximated",
                                                 "passed": [{"type": "polyOfAPlugin", "node": "strange", "why": "is not computed"}]}])"));
    EXPECT_EQ(timesNoted(host::DiagnosticKind::ApproximatedShape, "polyOfAPlugin"), 1U);
}

/// Nothing is stored of what the operation makes, so that there is nothing; the shape that comes
/// before it is there.
TEST_F(History, ABlockingOperationComputesNothing)
{
    const std::string tweak =
        R"(createNode polyTweak -n "first"; setAttr ".tk[0]" -type "float3" 0 5 0;
        createNode polyTweak -n "last"; setAttr ".tk[0]" -type "float3" 0 0 2; setAttr ".nds" )";
    const std::string links =
        R"(; connectAttr "cube.out" "first.ip"; connectAttr "first.out" "last.ip";)";
    openCube(tweak + "0" + links);
    EXPECT_EQ((*shape()->points)[0], (Vec3f{-0.5F, 4.5F, 2.5F}));
    openCube(tweak + "1" + links);
    EXPECT_EQ((*shape()->points)[0], (Vec3f{-0.5F, 4.5F, 0.5F}));
    EXPECT_EQ(outcome(), "computed");
    openCube(tweak + "2" + links);
    EXPECT_EQ(given("last"), nullptr);
    EXPECT_EQ(session.mesh(node("m")), nullptr);
    EXPECT_EQ(outcome(), "missing");
    EXPECT_EQ((*given("first")->points)[0], (Vec3f{-0.5F, 4.5F, 0.5F}));
    for (const char* solid : {"polyCube", "polySphere"}) {
        open("createNode transform -n \"t\"; createNode mesh -n \"m\" -p \"t\"; createNode " +
             std::string(solid) +
             " -n \"last\"; setAttr \".nds\" 2; connectAttr \"last.out\" \"m.i\";");
        EXPECT_EQ(session.mesh(node("m")), nullptr) << solid;
        EXPECT_EQ(outcome(), "missing") << solid;
    }
}

TEST_F(History, PassesOnWhatAnOperationNamesWrongly)
{
    const auto naming = [&](const std::string& type, const std::string& components) {
        openCube("createNode " + type +
                 " -n \"last\"; setAttr \".ics\" -type \"componentList\" 1 \"" + components +
                 "\"; connectAttr \"cube.out\" \"last.ip\";");
        const auto mesh = shape();
        EXPECT_EQ(mesh->points, given("cube")->points)
            << type << components; // softening moves nothing
        return outcome();
    };
    EXPECT_EQ(naming("polySoftEdge", "e[11]"), "computed");
    EXPECT_EQ(naming("polySoftEdge", "e[12]"), "approximated");
    EXPECT_EQ(naming("polySoftEdge", "e[10:12]"), "approximated");
    EXPECT_EQ(naming("polyExtrudeFace", "f[6]"), "approximated");
    EXPECT_EQ(naming("polyTriangulate", "f[2:4000000000]"), "approximated");
    EXPECT_EQ(naming("polyNormal", "e[0]"), "approximated");
}

TEST_F(History, MissesNothingThatIsSwitchedOff)
{
    openCube(
        R"(createNode polyTriangulate -n "last"; setAttr ".nds" 1; setAttr ".ics" -type "componentList" 1 "f[*]";
        connectAttr "cube.out" "last.ip";)");
    EXPECT_EQ(shape()->topology, given("cube")->topology);
    EXPECT_EQ(outcome(), "computed");
}

/// Of a shape whose matrix doubles heights, 1 of the world is half as much of the object.
TEST_F(History, MovesInTheWorldByTheMatrixThatIsPassed)
{
    openCube(
        R"(createNode polyMoveVertex -n "last"; setAttr ".ics" -type "componentList" 1 "vtx[2:3]";
        setAttr ".ix" -type "matrix" 1 0 0 0  0 2 0 0  0 0 1 0  9 9 9 1; setAttr ".ws" yes; setAttr ".ty" 1;
        connectAttr "cube.out" "last.ip";)");
    const auto mesh = shape();
    EXPECT_EQ((*mesh->points)[2], (Vec3f{-0.5F, 1, 0.5F}));
    EXPECT_EQ((*mesh->points)[3], (Vec3f{0.5F, 1, 0.5F}));
    EXPECT_EQ((*mesh->points)[4], (Vec3f{-0.5F, 0.5F, -0.5F}));
    EXPECT_EQ(outcome(), "computed");
}

/// Nothing of a chain is kept on the machine's stack: one frame of 400 bytes for each of 20,000
/// nodes would not fit into the 8 MB that programs have, nor into the 1 MB of others.
TEST_F(History, OfManyOperationsSharesWhatTheyLeaveAlone)
{
    constexpr int kNodes = 20000;
    std::string statements = "createNode transform -n \"t\"; createNode mesh -n \"m\" -p \"t\"; "
                             "createNode polyCube -n \"n0\";\n";
    for (int i = 1; i <= kNodes; ++i) {
        const std::string name = "n" + std::to_string(i);
        statements += "createNode polyTweak -n \"" + name + "\";";
        statements += i % 100 == 0 ? " setAttr \".tk[0]\" -type \"float3\" 0 1 0;\n" : "\n";
        statements += "connectAttr \"n" + std::to_string(i - 1) + ".out\" \"" + name + ".ip\";\n";
    }
    open(statements + "connectAttr \"n" + std::to_string(kNodes) + ".out\" \"m.i\";\n");
    const auto mesh = shape();
    EXPECT_EQ((*mesh->points)[0], (Vec3f{-0.5F, kNodes / 100 - 0.5F, 0.5F}));
    EXPECT_EQ(mesh->topology, given("n0")->topology);
    EXPECT_EQ(mesh->uvSets[0].points, given("n0")->uvSets[0].points);
    EXPECT_EQ(given("n199")->points, given("n100")->points); // nothing moves between them
    EXPECT_NE(given("n200")->points, given("n199")->points);
    EXPECT_EQ(outcome(), "computed");
}

TEST_F(History, OfDifferentOperationsSharesWhatEachLeavesAlone)
{
    constexpr int kNodes = 900;
    std::string statements = "createNode transform -n \"t\"; createNode mesh -n \"m\" -p \"t\"; "
                             "createNode polyCube -n \"n0\";\n";
    for (int i = 1; i <= kNodes; ++i) {
        const std::string name = "n" + std::to_string(i);
        constexpr std::string_view kTypes[] = {"polyTweak", "polyTweakUV", "polySoftEdge"};
        statements += "createNode " + std::string(kTypes[i % 3]) + " -n \"" + name + "\";";
        statements +=
            i % 3 == 0 ? " setAttr \".tk[7]\" -type \"float3\" 1 0 0;"
            : i % 3 == 1
                ? " setAttr \".uvtk[0]\" -type \"float2\" 0.5 0;"
                : " setAttr \".ics\" -type \"componentList\" 1 \"e[0]\"; setAttr \".a\" 180;";
        statements += "\nconnectAttr \"n" + std::to_string(i - 1) + ".out\" \"" + name + ".ip\";\n";
    }
    open(statements + "connectAttr \"n900.out\" \"m.i\";\n");
    const auto mesh = shape();
    EXPECT_EQ((*mesh->points)[7], (Vec3f{300.5F, -0.5F, -0.5F}));
    EXPECT_EQ((*mesh->uvSets[0].points)[0], (host::Vec2f{0.375F + 150, 0}));
    EXPECT_EQ(mesh->edgeFlags()[0], 1);
    EXPECT_EQ(given("n898")->points, given("n897")->points);     // texture coordinates moved
    EXPECT_EQ(given("n898")->topology, given("n897")->topology); //
    EXPECT_EQ(given("n899")->points, given("n898")->points);     // an edge softened
    EXPECT_EQ(given("n900")->topology, given("n899")->topology); // a point moved
    EXPECT_EQ(outcome(), "computed");
}

} // namespace
