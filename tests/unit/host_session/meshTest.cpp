// Stored meshes and what becomes of meshes with history.
#include "host/geometry/mesh/MeshData.h"
#include "tests/support/OpenScene.h"

#include <gtest/gtest.h>

namespace {

using host::DiagnosticKind;
using host::Vec2f;
using host::Vec3f;
using host::geometry::MeshData;

class Meshes : public test::OpenScene {
protected:
    std::shared_ptr<const MeshData> mesh(std::string_view name)
    {
        auto result = session.mesh(node(name));
        EXPECT_TRUE(result == nullptr || host::geometry::isConsistent(*result));
        return result;
    }
    void openSquare(const std::string& more = {}, const std::string& units = {})
    {
        open(units + "createNode transform -n \"a\";\ncreateNode mesh -n \"m\" -p \"a\";\n" +
             test::squareMesh() + more);
    }
};

TEST_F(Meshes, AreReadAsStored)
{
    openSquare();
    const auto square = mesh("m");
    ASSERT_NE(square, nullptr);
    EXPECT_EQ(square->topology->vertexCount, 9U);
    EXPECT_EQ(square->topology->edges.size(), 12U);
    EXPECT_EQ(square->topology->faceCount(), 4U);
    EXPECT_EQ((*square->points)[5], (Vec3f{2, 0, 1}));
    // The second face: edges 1, 8, 3 reversed, 7 reversed; 1 2 5 4 by its vertices.
    const auto first = square->topology->firstCorner(1);
    std::vector<std::uint32_t> loop;
    for (std::uint32_t corner = first; corner < square->topology->endCorner(1); ++corner) {
        loop.push_back(square->topology->cornerVertex(corner));
    }
    EXPECT_EQ(loop, (std::vector<std::uint32_t>{1, 4, 5, 2}));
    EXPECT_EQ(square->normalWeighting, host::geometry::NormalWeighting::AngleAndArea);
}

TEST_F(Meshes, TakePointsAndEdgesInAnyOrder)
{
    // Over what came in one go, number by number and element by element, and after a gap.
    openSquare(R"(
        setAttr ".vt[5].vx" 7;
        setAttr ".vt[8:10]"  3 3 3  4 4 4  5 5 5;
        setAttr ".vt[12]"  6 6 6;
        setAttr ".ed[2]"  4 3 0;
        setAttr ".ed[4].eh" 0;
    )");
    const auto square = mesh("m");
    ASSERT_NE(square, nullptr);
    ASSERT_EQ(square->points->size(), 13U);
    EXPECT_EQ((*square->points)[4], (Vec3f{1, 0, 1}));
    EXPECT_EQ((*square->points)[5], (Vec3f{7, 0, 1}));
    EXPECT_EQ((*square->points)[8], (Vec3f{3, 3, 3}));
    EXPECT_EQ((*square->points)[10], (Vec3f{5, 5, 5}));
    EXPECT_EQ((*square->points)[11], (Vec3f{0, 0, 0}));
    EXPECT_EQ((*square->points)[12], (Vec3f{6, 6, 6}));
    EXPECT_EQ(square->topology->edges[2].start, 4U);
    EXPECT_EQ(square->topology->edges[2].end, 3U);
    EXPECT_EQ(square->topology->edges[11].end, 8U);
    ASSERT_NE(square->edgeSmooth, nullptr);
    EXPECT_EQ(*square->edgeSmooth, (std::vector<std::uint8_t>{1, 1, 0, 1, 0, 1, 1, 1, 1, 1, 1, 1}));
}

TEST_F(Meshes, TakePointsInPieces)
{
    open(R"(createNode transform -n "a";
        createNode mesh -n "m" -p "a";
        setAttr -s 3 ".vt[0:1]"  0 0 0  1 0 0;
        setAttr ".vt[2]"  0 1 0;
        setAttr -s 3 ".ed[0]"  0 1 1;
        setAttr ".ed[1:2]"  1 2 0  2 0 1;
        setAttr ".fc[0]" -type "polyFaces" f 3 0 1 2 ;)");
    const auto triangle = mesh("m");
    ASSERT_NE(triangle, nullptr);
    EXPECT_EQ(*triangle->points, (std::vector<Vec3f>{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}));
    EXPECT_EQ(triangle->topology->faceCount(), 1U);
    EXPECT_EQ(triangle->topology->corners, (std::vector<std::int32_t>{0, 1, 2}));
    ASSERT_NE(triangle->edgeSmooth, nullptr);
    EXPECT_EQ(*triangle->edgeSmooth, (std::vector<std::uint8_t>{1, 0, 1}));
}

TEST_F(Meshes, OfScenesBefore2013WeighAllFacesAlike)
{
    using host::geometry::NormalWeighting;
    for (const char* version : {"7.0", "8.5", "2008", "2012"}) {
        openSquare({}, "requires maya \"" + std::string(version) + "\";\n");
        EXPECT_EQ(mesh("m")->normalWeighting, NormalWeighting::None) << version;
    }
    for (const char* version : {"2013", "2018ff07", "2026"}) {
        openSquare({}, "requires maya \"" + std::string(version) + "\";\n");
        EXPECT_EQ(mesh("m")->normalWeighting, NormalWeighting::AngleAndArea) << version;
    }
    openSquare("setAttr \".vnm\" 2;\n", "requires maya \"2011\";\n");
    EXPECT_EQ(mesh("m")->normalWeighting, NormalWeighting::Area);
}

TEST_F(Meshes, HavePointsInCentimetres)
{
    openSquare({}, "currentUnit -l meter;\n");
    EXPECT_EQ((*mesh("m")->points)[8], (Vec3f{200, 0, 200}));
}

TEST_F(Meshes, AddTweaks)
{
    openSquare(R"(setAttr ".pt[4]" -type "float3" 0 1 0 ;
        setAttr ".pt[6:7]" -type "float3" 0 2 0 0 3 0 ;
        setAttr ".pt[8].py" 4;)");
    const auto& points = *mesh("m")->points;
    EXPECT_EQ(points[3].y, 0);
    EXPECT_EQ(points[4], (Vec3f{1, 1, 1}));
    EXPECT_EQ(points[6].y, 2);
    EXPECT_EQ(points[7].y, 3);
    EXPECT_EQ(points[8], (Vec3f{2, 4, 2}));
}

TEST_F(Meshes, ContinueTheirListsOverSeveralStatements)
{
    open(R"(createNode mesh -n "m";
        setAttr -s 3 ".vt[0:1]"  0 0 0  1 0 0;
        setAttr ".vt[2]"  0 1 0;
        setAttr -s 3 ".ed[0:1]"  0 1 0  1 2 1;
        setAttr ".ed[2]"  2 0 0;
        setAttr -s 2 ".fc[0]" -type "polyFaces" f 3 0 1 2 ;
        setAttr ".fc[1]" f 3 -3 -2 -1 ;)");
    const auto triangle = mesh("m");
    EXPECT_EQ(triangle->topology->faceCount(), 2U);
    EXPECT_EQ(triangle->edgeFlags(), (std::vector<std::uint8_t>{0, 1, 0}));
}

TEST_F(Meshes, HaveTheirTextureCoordinatesBySet)
{
    open(R"(createNode mesh -n "m";
        setAttr -s 2 ".uvst";
        setAttr ".uvst[0].uvsn" -type "string" "map1";
        setAttr -s 3 ".uvst[0].uvsp[0:2]" -type "float2" 0 0  1 0  0 1 ;
        setAttr ".uvst[3].uvsn" -type "string" "second";
        setAttr -s 1 ".uvst[3].uvsp[0]" -type "float2" 0.5 0.25 ;
        setAttr ".cuvs" -type "string" "second";
        setAttr -s 3 ".vt[0:2]"  0 0 0  1 0 0  0 1 0;
        setAttr -s 3 ".ed[0:2]"  0 1 0  1 2 0  2 0 0;
        setAttr -s 2 ".fc[0:1]" -type "polyFaces"
            f 3 0 1 2 mu 0 3 2 1 0
            f 3 -3 -2 -1 mu 3 3 0 0 9 ;)");
    const auto triangle = mesh("m");
    ASSERT_EQ(triangle->uvSets.size(), 2U);
    EXPECT_EQ(triangle->uvSets[0].name, "map1");
    EXPECT_EQ((*triangle->uvSets[0].points)[1], (Vec2f{1, 0}));
    EXPECT_EQ(*triangle->uvSets[0].corners, (std::vector<std::int32_t>{2, 1, 0, -1, -1, -1}));
    EXPECT_EQ(triangle->uvSets[1].name, "second");
    EXPECT_EQ(*triangle->uvSets[1].corners, (std::vector<std::int32_t>{-1, -1, -1, 0, 0, -1}));
    EXPECT_EQ(triangle->currentUvSet, "second");
    EXPECT_EQ(timesNoted(DiagnosticKind::DamagedGeometry, "mesh"), 1U); // the id 9
}

TEST_F(Meshes, WithoutTextureCoordinatesHaveAnEmptySetOrNone)
{
    openSquare("setAttr \".uvst[0].uvsn\" -type \"string\" \"map1\";\n"
               "setAttr \".cuvs\" -type \"string\" \"map1\";");
    ASSERT_EQ(mesh("m")->uvSets.size(), 1U);
    EXPECT_EQ(mesh("m")->uvSets[0].corners, nullptr);
    EXPECT_EQ(mesh("m")->currentUvSet, "map1");
    openSquare();
    EXPECT_TRUE(mesh("m")->uvSets.empty());
    EXPECT_EQ(mesh("m")->currentUvSet, "");
}

TEST_F(Meshes, KeepLockedNormalsInvisibleFacesAndTheWeighting)
{
    openSquare(R"(setAttr -s 2 ".n[0:1]" -type "float3" 1e+20 1e+20 1e+20 0 2 0 ;
        setAttr ".hfd" -type "dataPolyComponent" Index_Data Face 3  2 0  1 0  99 0 ;
        setAttr ".vnm" 0;)");
    const auto square = mesh("m");
    ASSERT_NE(square->lockedNormals, nullptr);
    EXPECT_EQ(square->lockedNormals->size(), 2U);
    EXPECT_EQ((*square->lockedNormals)[1], (Vec3f{0, 2, 0}));
    EXPECT_EQ(*square->invisibleFaces, (std::vector<std::uint32_t>{1, 2}));
    EXPECT_EQ(square->normalWeighting, host::geometry::NormalWeighting::None);
}

TEST_F(Meshes, LoseBadFacesAndKeepTheRest)
{
    openSquare("setAttr \".fc[4]\" -type \"polyFaces\" f 3 0 1 77 ;");
    const auto square = mesh("m");
    EXPECT_EQ(square->topology->faceCount(), 5U);
    EXPECT_EQ(square->topology->firstCorner(4), square->topology->endCorner(4)); // empty
    EXPECT_EQ(timesNoted(DiagnosticKind::DamagedGeometry, "mesh"), 1U);
}

TEST_F(Meshes, OfAbsurdIndicesTakeLittleMemory)
{
    open(R"(createNode mesh -n "m";
        setAttr ".vt[2000000000]"  0 0 0;
        setAttr ".ed[2000000000]"  0 1 0;
        setAttr ".uvst[0].uvsp[2000000000]" -type "float2" 0 0;
        setAttr ".pt[2000000000]" -type "float3" 0 0 0;
        setAttr ".fc[2000000000]" -type "polyFaces" f 3 0 1 2 ;)");
    const auto odd = mesh("m");
    ASSERT_NE(odd, nullptr);
    EXPECT_LT(odd->points->size(), 10000U);
}

TEST_F(Meshes, AreEmptyWithoutStoredDataAndHistory)
{
    open("createNode transform -n \"a\"; createNode mesh -n \"m\" -p \"a\";");
    EXPECT_EQ(mesh("m"), nullptr);
    EXPECT_EQ(session.diagnostics().count(DiagnosticKind::MissingGeometry), 0U);
    EXPECT_EQ(session.mesh(node("a")), nullptr);
    EXPECT_EQ(session.mesh(host::session::kNoNode), nullptr);
}

TEST_F(Meshes, ComeFromAnotherMeshWithItsTweaksAndTheirOwn)
{
    openSquare(R"(setAttr ".pt[0]" -type "float3" 0 1 0 ;
        createNode mesh -n "copy" -p "a";
            setAttr ".pt[0]" -type "float3" 0 0.5 0 ;
        connectAttr "m.o" "copy.i";)");
    EXPECT_EQ((*mesh("copy")->points)[0].y, 1.5F);
    EXPECT_EQ(mesh("copy")->topology, mesh("m")->topology); // shared
    EXPECT_EQ(session.diagnostics().count(DiagnosticKind::ApproximatedShape), 0U);
}

TEST_F(Meshes, BehindADeformerAreTheOneAboveAndSaySo)
{
    openSquare(R"(setAttr ".io" yes;
        createNode mesh -n "skinned" -p "a";
        createNode tweak -n "tweak1";
        createNode groupId -n "id1";
        createNode groupParts -n "parts"; setAttr ".ic" -type "componentList" 1 "vtx[*]";
        createNode wrap -n "skin1";
        connectAttr "m.w" "tweak1.ip[0].ig";
        connectAttr "tweak1.og[0]" "parts.ig";
        connectAttr "id1.id" "parts.gi";
        connectAttr "parts.og" "skin1.ip[0].ig";
        connectAttr "skin1.og[0]" "skinned.i";)");
    ASSERT_NE(mesh("skinned"), nullptr);
    EXPECT_EQ(mesh("skinned")->points, mesh("m")->points);
    (void)mesh("skinned"); // asked for twice, said once
    EXPECT_EQ(timesNoted(DiagnosticKind::ApproximatedShape, "wrap"), 1U);
    EXPECT_EQ(timesNoted(DiagnosticKind::ApproximatedShape, "tweak"), 0U); // computed
    EXPECT_EQ(timesNoted(DiagnosticKind::UncomputedNode, "wrap"), 1U);
    EXPECT_EQ(timesNoted(DiagnosticKind::ApproximatedShape, "groupParts"), 0U);
}

TEST_F(Meshes, OfCylindersLieInTextureSpaceAsTheirVersionOfMayaLaysThem)
{
    // the sides begin at u = .375; they end at v = .6875 since 2023, and at .68843985 before
    const auto topOfSides = [this](const std::string& version) {
        open("requires maya \"" + version + R"(";
            createNode transform -n "a"; createNode mesh -n "m" -p "a";
            createNode polyCylinder -n "cylinder"; connectAttr "cylinder.out" "m.i";)");
        float top = 0;
        for (const Vec2f& uv : *mesh("m")->uvSets.front().points) {
            top = uv.x == 0.375F ? std::max(top, uv.y) : top; // on their left border
        }
        return top;
    };
    EXPECT_FLOAT_EQ(topOfSides("2024"), 0.6875F);
    EXPECT_FLOAT_EQ(topOfSides("2022"), 0.68843985F);
}

TEST_F(Meshes, OfAPrimitiveThatNothingComputesAreMissingAndSaySo)
{
    open(R"(createNode transform -n "a"; createNode mesh -n "m" -p "a";
        createNode meshLoader -n "cube"; createNode polyTweak -n "tweak1";
        connectAttr "cube.out" "tweak1.ip";
        connectAttr "tweak1.out" "m.i";)");
    EXPECT_EQ(mesh("m"), nullptr);
    EXPECT_EQ(timesNoted(DiagnosticKind::MissingGeometry, "meshLoader"), 1U);
}

TEST_F(Meshes, WithStoredDataUnderADeadHistoryUseIt)
{
    openSquare(R"(createNode meshLoader -n "sphere";
        connectAttr "sphere.out" "m.i";)");
    ASSERT_NE(mesh("m"), nullptr);
    EXPECT_EQ(mesh("m")->topology->faceCount(), 4U);
    EXPECT_EQ(timesNoted(DiagnosticKind::ApproximatedShape, "meshLoader"), 1U);
}

TEST_F(Meshes, GiveTheirRawNumbersBack)
{
    openSquare();
    EXPECT_TRUE(session.graph().findNumericArray(plug("m", "vrts")) == nullptr ||
                session.graph().findNumericArray(plug("m", "vrts"))->empty());
}

} // namespace
