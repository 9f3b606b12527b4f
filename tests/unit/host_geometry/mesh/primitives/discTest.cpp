#include "host/geometry/mesh/primitives/disc.h"

#include "solidMeasures.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace host::geometry {
namespace {

using test::Numbers;

DiscSettings disc(std::uint32_t sides, DiscDivision division, std::uint32_t subdivisions)
{
    DiscSettings settings;
    settings.sides = sides;
    settings.division = division;
    settings.subdivisions = subdivisions;
    return settings;
}

void expectAt(const MeshData& mesh, std::size_t number, double x, double z)
{
    EXPECT_NEAR((*mesh.points)[number].x, x, 1e-6) << number;
    EXPECT_EQ((*mesh.points)[number].y, 0) << number;
    EXPECT_NEAR((*mesh.points)[number].z, z, 1e-6) << number;
}

// A triangle 0 1 2 with its front side along x; divided once: the middles 3 4 5 of its edges on
// the circle, its middle 6, and a quad at each corner.
TEST(Disc, OfThreeSidesDividedOnceToACircle)
{
    const auto mesh = makeDisc(disc(3, DiscDivision::Circle, 1), {});
    ASSERT_TRUE(isConsistent(*mesh));
    ASSERT_EQ(mesh->points->size(), 7);
    const double c = std::sqrt(3.0) / 2;
    expectAt(*mesh, 0, -c, 0.5);
    expectAt(*mesh, 1, c, 0.5);
    expectAt(*mesh, 2, 0, -1);
    expectAt(*mesh, 3, 0, 1);
    expectAt(*mesh, 4, c, -0.5);
    expectAt(*mesh, 5, -c, -0.5);
    expectAt(*mesh, 6, 0, 0);
    ASSERT_EQ(mesh->topology->faceCount(), 3);
    EXPECT_EQ(test::faceVertices(*mesh, 0), (Numbers{5, 0, 3, 6}));
    EXPECT_EQ(test::faceVertices(*mesh, 1), (Numbers{3, 1, 4, 6}));
    EXPECT_EQ(test::faceVertices(*mesh, 2), (Numbers{4, 2, 5, 6}));
    // edges as walked: 5-0 0-3 3-6 6-5 | 3-1 1-4 4-6 | 4-2 2-5; those to the middle are smooth
    EXPECT_EQ(mesh->edgeFlags(), (std::vector<std::uint8_t>{0, 0, 1, 1, 0, 0, 1, 0, 0}));
    EXPECT_GT(test::areaVector(*mesh, 0).y, 0);
    EXPECT_NEAR((*mesh->uvSets[0].points)[2].y, 1, 1e-6);
    EXPECT_NEAR((*mesh->uvSets[0].points)[3].y, 0, 1e-6);
}

// Three quads, four times as many with each further division; the border is a regular polygon of
// 24 sides.
TEST(Disc, DividedThriceIsRound)
{
    const auto mesh = makeDisc(disc(3, DiscDivision::Circle, 3), {});
    ASSERT_TRUE(isConsistent(*mesh));
    EXPECT_EQ(mesh->points->size(), 61);
    EXPECT_EQ(mesh->topology->faceCount(), 48);
    EXPECT_EQ(test::eulerNumber(*mesh), 1);
    EXPECT_EQ(test::hardEdgeCount(*mesh), 24);
    EXPECT_NEAR(test::areaOf(*mesh), 12 * std::sin(std::numbers::pi / 12), 1e-5);
    // the first face of the second division is 10 5 7 11, so the third begins with the middles of
    // its edges: 10-5, 5-7 (on the circle at 195 degrees), 7-11, 11-10, and its mean
    expectAt(*mesh, 7, -1, 0);
    expectAt(*mesh, 20, -std::cos(std::numbers::pi / 12), -std::sin(std::numbers::pi / 12));
    EXPECT_EQ(test::faceVertices(*mesh, 0), (Numbers{22, 10, 19, 23}));
    EXPECT_EQ(test::faceVertices(*mesh, 3), (Numbers{21, 11, 22, 23}));
}

TEST(Disc, StaysAPolygonWhereItIsNotRounded)
{
    const double pentagon = 2.5 * std::sin(2 * std::numbers::pi / 5);
    for (const auto division :
         {DiscDivision::Quads, DiscDivision::Triangles, DiscDivision::Pie, DiscDivision::Caps}) {
        for (std::uint32_t subdivisions = 0; subdivisions < 4; ++subdivisions) {
            const DiscSettings settings = disc(5, division, subdivisions);
            const auto mesh = makeDisc(settings, {});
            ASSERT_TRUE(isConsistent(*mesh));
            EXPECT_EQ(mesh->topology->faceCount(), discFaceCount(settings));
            EXPECT_EQ(test::eulerNumber(*mesh), 1);
            EXPECT_NEAR(test::areaOf(*mesh), pentagon, 1e-5);
        }
    }
    // bands of the slices: as many as cuts, and the tips
    EXPECT_EQ(discFaceCount(disc(20, DiscDivision::Caps, 5)), 120);
    EXPECT_EQ(discFaceCount(disc(7, DiscDivision::Quads, 0)), 1);
    EXPECT_EQ(discFaceCount(disc(3, DiscDivision::Circle, 4000000000U)), std::uint64_t{1} << 31);
}

} // namespace
} // namespace host::geometry
