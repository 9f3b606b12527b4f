#include "host/geometry/mesh/primitives/platonicSolids.h"

#include "solidMeasures.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace host::geometry {
namespace {

using test::Numbers;

RegularSolidSettings settingsOf(RegularSolid solid, std::uint32_t subdivisions = 0)
{
    RegularSolidSettings settings;
    settings.solid = solid;
    settings.isSmooth = false;
    settings.subdivisions = subdivisions;
    return settings;
}

struct Known {
    RegularSolid solid;
    std::size_t points, edges, faces;
    double edge;   ///< over the radius
    double volume; ///< of edge 1
};

// Edge length and volume by the textbook.
TEST(RegularSolids, HaveTheEdgesAndVolumesOfTheTextbook)
{
    const double five = std::sqrt(5.0);
    const Known all[] = {
        {RegularSolid::Tetrahedron, 4, 6, 4, std::sqrt(8.0 / 3), 1 / (6 * std::sqrt(2.0))},
        {RegularSolid::Cube, 8, 12, 6, 2 / std::sqrt(3.0), 1},
        {RegularSolid::Octahedron, 6, 12, 8, std::sqrt(2.0), std::sqrt(2.0) / 3},
        {RegularSolid::Dodecahedron, 20, 30, 12, 4 / (std::sqrt(3.0) * (1 + five)),
         (15 + 7 * five) / 4},
        {RegularSolid::Icosahedron, 12, 30, 20, 4 / std::sqrt(10 + 2 * five), 5 * (3 + five) / 12},
        {RegularSolid::SoccerBall, 60, 90, 32, 4 / std::sqrt(58 + 18 * five),
         (125 + 43 * five) / 4},
    };
    for (const Known& known : all) {
        RegularSolidSettings settings = settingsOf(known.solid);
        settings.radius = 3;
        const auto mesh = makeRegularSolid(settings, {});
        ASSERT_TRUE(isConsistent(*mesh));
        EXPECT_EQ(mesh->points->size(), known.points);
        EXPECT_EQ(mesh->topology->edges.size(), known.edges);
        EXPECT_EQ(mesh->topology->faceCount(), known.faces);
        EXPECT_EQ(regularSolidFaceCount(settings), known.faces);
        EXPECT_TRUE(test::isClosed(*mesh));
        EXPECT_EQ(test::hardEdgeCount(*mesh), known.edges);
        EXPECT_NEAR(edgeOverRadius(known.solid), known.edge, 1e-10);
        const double edge = 3 * known.edge;
        EXPECT_NEAR(test::volumeOf(*mesh), known.volume * edge * edge * edge, 1e-4);
        for (const MeshEdge& link : mesh->topology->edges) {
            EXPECT_NEAR(
                length(toDouble((*mesh->points)[link.start]) - toDouble((*mesh->points)[link.end])),
                edge, 1e-5);
        }
    }
}

// A corner on -z (0), a ring of five (1-5) from 36 degrees on, a ring of five (6-10) from 0 on, a
// corner on +z (11).
TEST(RegularSolids, NumberTheIcosahedronRingByRing)
{
    const auto mesh = makeRegularSolid(settingsOf(RegularSolid::Icosahedron), {});
    const double high = 1 / std::sqrt(5.0);
    const double wide = 2 / std::sqrt(5.0);
    const auto& points = *mesh->points;
    EXPECT_NEAR(points[0].z, -1, 1e-6);
    EXPECT_NEAR(points[1].x, wide * std::cos(std::numbers::pi / 5), 1e-6);
    EXPECT_NEAR(points[1].z, -high, 1e-6);
    EXPECT_NEAR(points[3].x, -wide, 1e-6);
    EXPECT_NEAR(points[6].x, wide, 1e-6);
    EXPECT_NEAR(points[6].z, high, 1e-6);
    EXPECT_NEAR(points[11].z, 1, 1e-6);
    EXPECT_EQ(test::faceVertices(*mesh, 0), (Numbers{0, 2, 1}));
    EXPECT_EQ(test::faceVertices(*mesh, 5), (Numbers{1, 2, 7}));
    EXPECT_EQ(test::faceVertices(*mesh, 9), (Numbers{5, 1, 6}));
    EXPECT_EQ(test::faceVertices(*mesh, 10), (Numbers{1, 7, 6}));
    EXPECT_EQ(test::faceVertices(*mesh, 19), (Numbers{10, 6, 11}));
    // longitude from +z: point 6 is at arctan 2 of it, the corner on -z at the end of the turn
    const auto& uvs = *mesh->uvSets[0].points;
    ASSERT_EQ(uvs.size(), 15);
    EXPECT_NEAR(uvs[6].x, 0.5 + std::atan(2.0) / (2 * std::numbers::pi), 1e-6);
    EXPECT_NEAR(uvs[6].y, 0.5, 1e-6);
    EXPECT_NEAR(uvs[0].x, 1, 1e-6);
    // face 0 crosses the seam: its second corner, at a negative longitude, gets one of its own
    EXPECT_EQ(test::faceUvs(*mesh, 0), (Numbers{0, 12, 1}));
    EXPECT_NEAR(uvs[12].x, uvs[2].x + 1, 1e-6);
    EXPECT_EQ(test::faceUvs(*mesh, 6), (Numbers{2, 3, 8}));
}

// Walking from corner 0 on +y; 1 is its neighbour towards +x.
TEST(RegularSolids, NumberTheSoccerBallFromItsTop)
{
    const auto mesh = makeRegularSolid(settingsOf(RegularSolid::SoccerBall), {});
    const auto& points = *mesh->points;
    EXPECT_EQ(points[0], (Vec3f{0, 1, 0}));
    EXPECT_GT(points[1].x, 0);
    EXPECT_NEAR(points[1].z, 0, 1e-6);
    for (std::size_t i = 0; i < 60; ++i) {
        EXPECT_NEAR(length(toDouble(points[i])), 1, 1e-6);
    }
    EXPECT_EQ(test::faceVertices(*mesh, 0), (Numbers{0, 1, 4, 11, 7, 2}));
    EXPECT_EQ(test::faceVertices(*mesh, 2), (Numbers{3, 8, 5, 1, 0}));
    EXPECT_EQ(mesh->topology->edges[5].start, 2);
    EXPECT_EQ(mesh->topology->edges[5].end, 0);
    std::size_t pentagons = 0;
    for (std::uint32_t face = 0; face < 32; ++face) {
        pentagons += test::faceVertices(*mesh, face).size() == 5 ? 1 : 0;
    }
    EXPECT_EQ(pentagons, 12);
}

TEST(RegularSolids, DividedGoToTheSphere)
{
    for (const auto division :
         {SolidDivision::Quads, SolidDivision::Triangles, SolidDivision::Pie}) {
        RegularSolidSettings settings = settingsOf(RegularSolid::Dodecahedron, 2);
        settings.division = division;
        const auto mesh = makeRegularSolid(settings, {});
        ASSERT_TRUE(isConsistent(*mesh));
        EXPECT_EQ(mesh->topology->faceCount(), regularSolidFaceCount(settings));
        EXPECT_TRUE(test::isClosed(*mesh));
        EXPECT_EQ(test::eulerNumber(*mesh), 2);
        for (const Vec3f& point : *mesh->points) {
            ASSERT_NEAR(length(toDouble(point)), 1, 1e-6);
        }
        settings.inflation = 0; // still the flat faces
        const double five = std::sqrt(5.0);
        const double edge = 4 / (std::sqrt(3.0) * (1 + five));
        EXPECT_NEAR(test::areaOf(*makeRegularSolid(settings, {})),
                    3 * std::sqrt(25 + 10 * five) * edge * edge, 1e-4);
    }
}

} // namespace
} // namespace host::geometry
