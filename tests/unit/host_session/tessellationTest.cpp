// The triangles of surface shapes, by the attributes that steer them.
#include "host/geometry/mesh/renderMesh.h"
#include "tests/support/OpenScene.h"

#include <gtest/gtest.h>

#include <cmath>
#include <set>

namespace {

using host::DiagnosticKind;
using host::Vec3f;

class Tessellations : public test::OpenScene {
protected:
    /// A flat surface of 2 x 1 spans over the rectangle 4 x 2, degree 1; `more`: its attributes.
    void openPlane(const std::string& more = {})
    {
        open("createNode transform -n \"a\";\ncreateNode nurbsSurface -n \"s\" -p \"a\";\n"
             "setAttr \".cc\" -type \"nurbsSurface\" 1 1 0 0 no 3 0 1 2 2 0 1\n"
             "6 0 0 0  0 2 0  2 0 0  2 2 0  4 0 0  4 2 0;\n" +
             more);
    }
    /// A cubic arch of one span: z = 3 t (1 - t) over x = 3 t, which turns by 2 atan(1) = 90
    /// degrees; two units deep.
    void openArch(const std::string& more = {})
    {
        open("createNode transform -n \"a\";\ncreateNode nurbsSurface -n \"s\" -p \"a\";\n"
             "setAttr \".cc\" -type \"nurbsSurface\" 3 1 0 0 no 6 0 0 0 1 1 1 2 0 1\n"
             "8 0 0 0  0 2 0  1 0 1  1 2 1  2 0 1  2 2 1  3 0 0  3 2 0;\n" +
             more);
    }
    std::size_t triangles()
    {
        const auto mesh = session.tessellation(node("s"));
        return mesh == nullptr ? 0 : mesh->indices.size() / 3;
    }
};

TEST_F(Tessellations, AreThoseOfTheSurface)
{
    openPlane();
    const auto mesh = session.tessellation(node("s"));
    ASSERT_NE(mesh, nullptr);
    EXPECT_EQ(mesh->faceFirstTriangle, (std::vector<std::uint32_t>{0, 4}));
    ASSERT_EQ(mesh->positions.size(), 6U);
    for (std::size_t i = 0; i < 6; ++i) {
        EXPECT_EQ(mesh->positions[i].x, 4 * mesh->uvs[i].x); // object space; even parameters
        EXPECT_EQ(mesh->positions[i].y, 2 * mesh->uvs[i].y);
        EXPECT_EQ(mesh->normals[i], (Vec3f{0, 0, 1}));
    }
}

TEST_F(Tessellations, OppositeSurfacesAreTurnedOver)
{
    openPlane("setAttr \".op\" yes;\n");
    EXPECT_EQ(session.tessellation(node("s"))->normals[0], (Vec3f{0, 0, -1}));
}

TEST_F(Tessellations, AreFinerWhenTheDisplayIs)
{
    openArch();
    const std::size_t usual = triangles();
    EXPECT_GE(usual, 2U * 90 / 15);
    EXPECT_LE(usual, 2U * 4 * 90 / 15);
    openArch("setAttr \".cps\" 32;\n");
    EXPECT_EQ(triangles(), 2U * 32);
    openArch("setAttr \".cps\" 255;\n"); // no display is finer than 32
    EXPECT_EQ(triangles(), 2U * 32);
    openPlane("setAttr \".cps\" 32;\n"); // nothing to be smoothed
    EXPECT_EQ(triangles(), 4U);
}

TEST_F(Tessellations, FollowExplicitAttributesWhenTheyAreOn)
{
    const std::string numbers = "setAttr \".mu\" 3; setAttr \".nu\" 5; setAttr \".mv\" 2; "
                                "setAttr \".nv\" 3; setAttr \".ucr\" no;\n";
    openPlane(numbers);
    EXPECT_EQ(triangles(), 4U);
    openPlane("setAttr \".eta\" yes;\n" + numbers);
    EXPECT_EQ(triangles(), 2U * (2 * 5) * 3); // five in each of two spans, three over the surface
    openPlane("setAttr \".eta\" yes;\n");     // three per span
    EXPECT_EQ(triangles(), 2U * (2 * 3) * 3);
}

TEST_F(Tessellations, RefineByChordHeight)
{
    const std::string one = "setAttr \".eta\" yes; setAttr \".nu\" 1; setAttr \".nv\" 1;\n";
    openArch(one + "setAttr \".ucr\" no;\n");
    EXPECT_EQ(triangles(), 2U);
    // Chords of the parabola z = x (3 - x) / 3 over a width w lie w^2 / 12 below it, measured
    // upright; 0.02 asks for widths of 0.49: seven, or less where the arch is steep.
    openArch(one + "setAttr \".ucr\" no; setAttr \".uch\" yes; setAttr \".ch\" 0.02;\n");
    EXPECT_GE(triangles(), 2U * 5);
    EXPECT_LE(triangles(), 2U * 7);
    // A height of a hundredth of the chord is a turn of 4 atan(0.02), 4.6 degrees: 20 if the 90
    // degrees were even.
    openArch(one + "setAttr \".chr\" 0.99;\n");
    EXPECT_GE(triangles(), 2U * 20);
    EXPECT_LE(triangles(), 2U * 40);
}

TEST_F(Tessellations, HonourTrims)
{
    // A triangle of half the parameter square.
    const auto edge = [](const std::string& from, const std::string& to) {
        return "1 1 1 0 no 3 2 0 1 2 " + from + " 0 " + to + " 0 0.001 0 -1 1 1 1 0 no 2 2 0 1 2 " +
               from + " " + to + " 0 0.001 ";
    };
    openPlane("setAttr \".tf[0]\" -type \"nurbsTrimface\" no 1 0 3 0 0 0 " + edge("0 0", "2 0") +
              edge("2 0", "2 1") + edge("2 1", "0 0") + ";\n");
    const auto mesh = session.tessellation(node("s"));
    ASSERT_NE(mesh, nullptr);
    double area = 0;
    for (std::size_t i = 0; i < mesh->indices.size(); i += 3) {
        const host::Vec3d a = toDouble(mesh->positions[mesh->indices[i]]);
        area += length(cross(toDouble(mesh->positions[mesh->indices[i + 1]]) - a,
                             toDouble(mesh->positions[mesh->indices[i + 2]]) - a)) /
                2;
    }
    EXPECT_NEAR(area, 4, 1e-5);
    EXPECT_EQ(timesNoted(DiagnosticKind::DamagedGeometry, "open trim boundary"), 0U);
}

TEST_F(Tessellations, SayWhatWasOddAboutTrims)
{
    openPlane(
        "setAttr \".tf[0]\" -type \"nurbsTrimface\" no 1 0 1 0 "
        "1 1 1 0 no 3 2 0 1 2 0 0 0 1 1 0 0.001 0 -1 1 1 1 0 no 2 2 0 1 2 0 0 1 1 0 0.001;\n");
    EXPECT_EQ(triangles(), 4U);
    EXPECT_EQ(timesNoted(DiagnosticKind::DamagedGeometry, "open trim boundary"), 1U);
}

TEST_F(Tessellations, NeedASurface)
{
    open("createNode transform -n \"a\";\ncreateNode nurbsSurface -n \"s\" -p \"a\";\n");
    EXPECT_EQ(session.tessellation(node("s")), nullptr);
    EXPECT_EQ(session.tessellation(node("a")), nullptr);
    EXPECT_EQ(session.tessellation(host::session::kNoNode), nullptr);
}

} // namespace
