// Deformers from statements to the shape. All of them bend the square of test::squareMesh(): nine
// points, row by row at x and z 0, 1, 2.
#include "tests/support/OpenScene.h"

#include "host/geometry/mesh/MeshData.h"

#include <gtest/gtest.h>

namespace {

using host::Vec3f;

class Deformers : public test::OpenScene {
protected:
    /// A square behind nodes that lead from "m.w" to "bent.i".
    void openSquare(const std::string& more, const std::string& before = "")
    {
        open(before +
             "createNode transform -n \"a\";\n"
             "createNode mesh -n \"m\" -p \"a\"; setAttr \".io\" yes;\n" +
             test::squareMesh() + "createNode mesh -n \"bent\" -p \"a\";\n" + more);
    }
    Vec3f point(std::size_t index)
    {
        const auto mesh = session.mesh(node("bent"));
        return mesh != nullptr && index < mesh->points->size() ? (*mesh->points)[index] : Vec3f{};
    }
    void expectPoint(std::size_t index, const Vec3f& expected)
    {
        EXPECT_NEAR(point(index).x, expected.x, 1e-6) << index;
        EXPECT_NEAR(point(index).y, expected.y, 1e-6) << index;
        EXPECT_NEAR(point(index).z, expected.z, 1e-6) << index;
    }
};

// The second joint climbs from 0 at frame 1 to 4 at frame 5 (in "film" 5880000 ticks a frame); the
// rows of the square go with it by 0, a half and 1.
TEST_F(Deformers, FollowJointsOverTime)
{
    openSquare(R"(createNode joint -n "j0"; createNode joint -n "j1";
        createNode animCurveTL -n "climb"; setAttr -s 2 ".ktv[0:1]"  1 0 5 4;
        setAttr -s 2 ".kit[0:1]"  2 2; setAttr -s 2 ".kot[0:1]"  2 2;
        createNode skinCluster -n "skin";
        setAttr -s 9 ".wl";
        setAttr ".wl[0:6].w"  1 0 1  1 0 1  1 0 1  2 0 0.5 2 0.5  2 0 0.5 2 0.5  2 0 0.5 2 0.5
            1 2 1;
        setAttr ".wl[7].w[2]"  1; setAttr ".wl[8].w[2]"  1;
        connectAttr "climb.o" "j1.ty";
        connectAttr "j0.wm" "skin.ma[0]"; connectAttr "j1.wm" "skin.ma[2]";
        connectAttr "m.w" "skin.ip[0].ig"; connectAttr "skin.og[0]" "bent.i";)");
    session.setCurrentTime(3 * 5880000);
    expectPoint(0, {0, 0, 0});
    expectPoint(4, {1, 1, 1});
    expectPoint(6, {0, 2, 2});
    expectPoint(8, {2, 2, 2});
    session.setCurrentTime(5 * 5880000);
    expectPoint(4, {1, 2, 1});
    expectPoint(8, {2, 4, 2});
    EXPECT_EQ(timesNoted(host::DiagnosticKind::ApproximatedShape, "skinCluster"), 0U);
}

// The full shape lifts point 0 by 3 and point 8 by 1, the in-between moves point 0 by 2 along x.
TEST_F(Deformers, BlendShapesWithInBetweens)
{
    openSquare(R"(createNode blendShape -n "blend"; setAttr ".w[3]" 0.75;
        setAttr ".it[0].itg[3].iti[5500].ipt" -type "pointArray" 1 2 0 0 1;
        setAttr ".it[0].itg[3].iti[5500].ict" -type "componentList" 1 "vtx[0]";
        setAttr ".it[0].itg[3].iti[6000].ipt" -type "pointArray" 2 0 1 0 1 0 3 0 1;
        setAttr ".it[0].itg[3].iti[6000].ict" -type "componentList" 2 "vtx[8]" "vtx[0]";
        connectAttr "m.w" "blend.ip[0].ig"; connectAttr "blend.og[0]" "bent.i";)");
    expectPoint(0, {1, 1.5F, 0});
    expectPoint(8, {2, 0.5F, 2});
}

// Only the group's points rise, and half as far: tweak, group and cluster in one chain.
TEST_F(Deformers, StandInChainsWithGroups)
{
    openSquare(R"(createNode tweak -n "tweak1"; setAttr ".vl[0].vt[4]" -type "float3" 0 0 5;
        createNode groupId -n "id1";
        createNode groupParts -n "parts"; setAttr ".ic" -type "componentList" 1 "vtx[4:5]";
        createNode transform -n "handle"; setAttr ".t" -type "double3" 0 8 0;
        createNode cluster -n "cluster1"; setAttr ".en" 0.5;
        setAttr ".wl[0].w[5]" 0.25;
        connectAttr "m.w" "tweak1.ip[0].ig"; connectAttr "tweak1.og[0]" "parts.ig";
        connectAttr "id1.id" "parts.gi"; connectAttr "id1.id" "cluster1.ip[0].gi";
        connectAttr "parts.og" "cluster1.ip[0].ig"; connectAttr "handle.wm" "cluster1.ma";
        connectAttr "cluster1.og[0]" "bent.i";)");
    expectPoint(3, {0, 0, 1});
    expectPoint(4, {1, 4, 6});
    expectPoint(5, {2, 1, 1});
}

// The square stands at (0, 10, 0) in the world, the lattice's box of side 4 is about there too; its
// upper half of points moves by a quarter of the box along x: the square, half way up, by an
// eighth, half a unit.
TEST_F(Deformers, FindTheWorldOfTheShape)
{
    openSquare(R"(setAttr "a.t" -type "double3" 0 10 0;
        createNode transform -n "box"; setAttr ".t" -type "double3" 1 10 1;
        setAttr ".s" -type "double3" 4 4 4;
        createNode lattice -n "boxShape" -p "box"; setAttr ".td" 2;
        setAttr ".cc" -type "lattice" 2 2 2 8
            -0.5 -0.5 -0.5  0.5 -0.5 -0.5  -0.25 0.5 -0.5  0.75 0.5 -0.5
            -0.5 -0.5 0.5  0.5 -0.5 0.5  -0.25 0.5 0.5  0.75 0.5 0.5;
        createNode ffd -n "ffd1";
        connectAttr "boxShape.lo" "ffd1.dlp"; connectAttr "boxShape.wm" "ffd1.dlm";
        connectAttr "boxShape.wm" "ffd1.blm";
        connectAttr "m.w" "ffd1.ip[0].ig"; connectAttr "ffd1.og[0]" "bent.i";)");
    expectPoint(0, {0.5F, 0, 0});
    expectPoint(8, {2.5F, 0, 2});
}

// A quarter turn over the height of the handle, which lies along x at the square: 90 degrees in a
// file are a curvature of pi / 2.
TEST_F(Deformers, BendAlongTheirHandles)
{
    openSquare(R"(createNode transform -n "h"; setAttr ".r" -type "double3" 0 0 -90;
        createNode deformBend -n "hShape" -p "h"; setAttr ".cur" 90;
        setAttr ".dd" -type "doubleArray" 3 -1 1 1.5;
        createNode nonLinear -n "bend1";
        connectAttr "hShape.dd" "bend1.dd"; connectAttr "h.wm" "bend1.ma";
        connectAttr "m.o" "bend1.ip[0].ig"; connectAttr "bend1.og[0]" "bent.i";)");
    constexpr float kRadius = 0.63661977F; // 2 / pi: the handle's +y is the world's +x, +x its -y
    expectPoint(0, {0, 0, 0});
    expectPoint(1, {kRadius, -kRadius, 0});
    expectPoint(2, {kRadius, -kRadius - 1, 0});
}

} // namespace
