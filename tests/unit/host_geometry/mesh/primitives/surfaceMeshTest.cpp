#include "host/geometry/mesh/primitives/surfaceMesh.h"
#include "host/geometry/mesh/primitives/makeFace.h"
#include "host/geometry/mesh/primitives/roundSolids.h"

#include "solidMeasures.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace host::geometry {
namespace {

using test::Numbers;

// Two cells side by side, each of two triangles; the second cell has vertices of its own.
RenderMesh twoCells()
{
    RenderMesh mesh;
    mesh.positions = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0},
                      {1, 0, 0}, {2, 0, 0}, {2, 1, 0}, {1, 1, 0}};
    mesh.uvs = {{0, 0}, {.5F, 0}, {.5F, 1}, {0, 1}, {.5F, 0}, {1, 0}, {1, 1}, {.5F, 1}};
    mesh.indices = {0, 1, 2, 0, 2, 3, 4, 5, 7, 5, 6, 7};
    return mesh;
}

TEST(SurfaceMesh, JoinsPointsAtOnePlace)
{
    const auto mesh = meshOfTessellation(twoCells(), false, "map1");
    ASSERT_NE(mesh, nullptr);
    ASSERT_TRUE(isConsistent(*mesh));
    EXPECT_EQ(mesh->points->size(), 6);
    EXPECT_EQ(mesh->topology->faceCount(), 4);
    EXPECT_EQ(test::eulerNumber(*mesh), 1);
    EXPECT_EQ(test::hardEdgeCount(*mesh), 6);
    EXPECT_EQ(test::faceVertices(*mesh, 3), (Numbers{4, 5, 2}));
    EXPECT_EQ(test::faceUvs(*mesh, 3), (Numbers{5, 6, 7}));
}

TEST(SurfaceMesh, JoinsTheHalvesOfCells)
{
    RenderMesh cells = twoCells();
    const auto mesh = meshOfTessellation(cells, true, "map1");
    ASSERT_TRUE(isConsistent(*mesh));
    ASSERT_EQ(mesh->topology->faceCount(), 2);
    EXPECT_EQ(test::faceVertices(*mesh, 0), (Numbers{0, 1, 2, 3}));
    EXPECT_EQ(test::faceVertices(*mesh, 1), (Numbers{1, 4, 5, 2}));
    EXPECT_NEAR(test::areaOf(*mesh), 2, 1e-6);
    // no rectangle of parameters any more
    cells.uvs[2].x = 0.6F;
    EXPECT_EQ(meshOfTessellation(cells, true, "map1")->topology->faceCount(), 3);
}

TEST(SurfaceMesh, LeavesOutWhatHasNoArea)
{
    RenderMesh mesh = twoCells();
    mesh.positions[0] = mesh.positions[1]; // the first triangle closes up
    EXPECT_EQ(meshOfTessellation(mesh, false, "map1")->topology->faceCount(), 3);
    mesh.indices = {0, 1, 2};
    EXPECT_EQ(meshOfTessellation(mesh, false, "map1"), nullptr);
    EXPECT_EQ(meshOfTessellation({}, true, "map1"), nullptr);
}

TEST(SurfaceMesh, OfControlPointsClosesWithItsSurface)
{
    // linear both ways; three points round (the fourth is the first again) by two up
    SurfaceData surface;
    surface.degreeU = 1;
    surface.degreeV = 1;
    surface.knotsU = {0, 1, 2, 3};
    surface.knotsV = {0, 1};
    surface.formU = SplineForm::Closed;
    surface.poles = {1, 0, 0, 1, 0, 1, 0, 1, 0, 0, 1, 1, -1, 0, 0, -1, 0, 1, 1, 0, 0, 1, 0, 1};
    const auto mesh = meshOfControlPoints(surface, "map1");
    ASSERT_NE(mesh, nullptr);
    ASSERT_TRUE(isConsistent(*mesh));
    EXPECT_EQ(mesh->points->size(), 6);
    EXPECT_EQ(mesh->topology->faceCount(), 3);
    EXPECT_EQ(test::eulerNumber(*mesh), 0);
    EXPECT_EQ(test::faceVertices(*mesh, 2), (Numbers{4, 0, 1, 5}));
    EXPECT_EQ(mesh->uvSets[0].points->size(), 8);
    surface.poles.resize(9);
    EXPECT_EQ(meshOfControlPoints(surface, "map1"), nullptr);
}

TEST(MakeFace, MayHaveHoles)
{
    const std::vector<Vec3f> points{{0, 0, 0}, {0, 0, 4}, {4, 0, 4}, {4, 0, 0},
                                    {1, 0, 1}, {2, 0, 1}, {1, 0, 2}};
    const std::vector<std::uint32_t> loops{4, 3};
    const auto mesh = makeFace(points, loops, true, "map1");
    ASSERT_NE(mesh, nullptr);
    ASSERT_TRUE(isConsistent(*mesh));
    EXPECT_EQ(mesh->topology->faceCount(), 1);
    EXPECT_EQ(mesh->topology->loopCount(), 2);
    EXPECT_EQ(mesh->topology->edges.size(), 7);
    EXPECT_EQ(mesh->topology->edges[3].end, 0);
    EXPECT_EQ(mesh->topology->edges[6].end, 4);
    // looks along y: x across, z up
    EXPECT_EQ((*mesh->uvSets[0].points)[1], (Vec2f{0, 1}));
    EXPECT_EQ((*mesh->uvSets[0].points)[5], (Vec2f{.5F, .25F}));
}

TEST(MakeFace, NeedsThreePointsALoop)
{
    const std::vector<Vec3f> points{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {5, 5, 5}};
    const auto sizes = [](std::vector<std::uint32_t> list) { return list; };
    EXPECT_EQ(makeFace(points, sizes({2}), false, ""), nullptr);
    EXPECT_EQ(makeFace(points, sizes({3, 3}), false, ""), nullptr);
    EXPECT_EQ(makeFace(points, sizes({4000000000U}), false, ""), nullptr);
    EXPECT_EQ(makeFace({}, {}, false, ""), nullptr);
    ASSERT_NE(makeFace(points, {}, false, ""), nullptr); // no loops told: all points are one
    EXPECT_EQ(makeFace(points, {}, false, "")->topology->corners.size(), 4);
}

// The wire's middle stands on the helix: half a width from the axis, rising evenly; its rings lie a
// wire's radius about it. Volume about section times length of the way.
TEST(Helix, FollowsItsWay)
{
    HelixSettings settings;
    settings.coils = 2;
    settings.height = 6;
    settings.width = 8;
    settings.radius = 0.5;
    settings.axisCells = 4;
    settings.coilCells = 200;
    const auto mesh = makeHelix(settings, {});
    ASSERT_TRUE(isConsistent(*mesh));
    ASSERT_EQ(mesh->points->size(), 4 * 201);
    EXPECT_TRUE(test::isClosed(*mesh));
    EXPECT_EQ(test::eulerNumber(*mesh), 2);
    for (std::size_t ring = 0; ring <= 200; ++ring) {
        Vec3d middle;
        for (std::size_t k = 0; k < 4; ++k) {
            middle = middle + toDouble((*mesh->points)[4 * ring + k]) * 0.25;
        }
        EXPECT_NEAR(std::sqrt(middle.x * middle.x + middle.z * middle.z), 4, 1e-5);
        EXPECT_NEAR(middle.y, -3 + 6 * static_cast<double>(ring) / 200, 1e-5);
        EXPECT_NEAR(length(toDouble((*mesh->points)[4 * ring]) - middle), 0.5, 1e-5);
    }
    const double way = std::sqrt(std::pow(2 * 2 * std::numbers::pi * 4, 2) + 36);
    EXPECT_NEAR(test::volumeOf(*mesh), way * 0.5, way * 0.5 * 0.01); // a square of diagonal 1
    settings.isClockwise = true;
    EXPECT_NEAR(test::volumeOf(*makeHelix(settings, {})), way * 0.5, way * 0.5 * 0.01);
}

} // namespace
} // namespace host::geometry
