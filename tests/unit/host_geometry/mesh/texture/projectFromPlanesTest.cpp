// Texture coordinates from several sides at once. The cubes are those of a polygon cube: its faces
// are front, top, back, bottom, right and left; what a plane sees is read off the corners.
#include "host/geometry/mesh/texture/projectFromPlanes.h"
#include "host/geometry/mesh/texture/projectionPlanes.h"
#include "tests/unit/host_geometry/mesh/texture/uvMaker.h"

#include <cmath>
#include <limits>
#include <numeric>

namespace host::geometry {
namespace {

using test::expectCorner;
using test::expectUv;
using test::Ids;
using test::idsOf;
using Faces = std::vector<std::uint32_t>;

MeshData cube(bool hasBottom = true)
{
    std::vector<std::vector<test::Loop>> faces{{{0, 1, 3, 2}}, {{2, 3, 5, 4}}, {{4, 5, 7, 6}}};
    if (hasBottom) {
        faces.push_back({{6, 7, 1, 0}});
    }
    faces.push_back({{1, 7, 5, 3}});
    faces.push_back({{6, 0, 2, 4}});
    return test::meshOf({{-.5F, -.5F, .5F},
                         {.5F, -.5F, .5F},
                         {-.5F, .5F, .5F},
                         {.5F, .5F, .5F},
                         {-.5F, .5F, -.5F},
                         {.5F, .5F, -.5F},
                         {-.5F, -.5F, -.5F},
                         {.5F, -.5F, -.5F}},
                        faces);
}

/// Nothing moved after the projection.
PlanesProjection bare()
{
    PlanesProjection projection;
    projection.layout.arrangement = UvArrangement::None;
    projection.layout.fit = UvFit::None;
    return projection;
}

Faces allFaces(const MeshData& mesh)
{
    Faces faces(mesh.topology->faceCount());
    std::iota(faces.begin(), faces.end(), 0U);
    return faces;
}

std::size_t countOf(const MeshData& mesh)
{
    return mesh.uvSets.at(0).points->size();
}

TEST(ProjectFromPlanes, ACubeIsSixSquaresPlaneByPlane)
{
    const MeshData mesh = cube();
    const auto result = projectFromPlanes(mesh, "", allFaces(mesh), bare());
    ASSERT_EQ(countOf(*result), 24U);
    // right, left, top, bottom, front, back; each from its first corner on
    EXPECT_EQ(idsOf(*result), (Ids{16, 17, 18, 19, 8, 9, 10, 11, 20, 21, 22, 23,
                                   12, 13, 14, 15, 0, 1, 2,  3,  4,  5,  6,  7}));
    // Every face begins at the lower left of what its plane sees.
    for (std::size_t first = 0; first < 24; first += 4) {
        expectUv(*result, first, -0.5, -0.5);
        expectUv(*result, first + 1, 0.5, -0.5);
        expectUv(*result, first + 2, 0.5, 0.5);
        expectUv(*result, first + 3, -0.5, 0.5);
    }
    EXPECT_EQ(result->points, mesh.points);
    EXPECT_EQ(result->topology, mesh.topology);
    EXPECT_EQ(result->currentUvSet, "map1");
}

TEST(ProjectFromPlanes, WhatOtherFacesHaveClosesUpAndNewOnesFollow)
{
    const MeshData mesh = cube(false);
    const auto all = projectFromPlanes(mesh, "", allFaces(mesh), bare());
    EXPECT_EQ(countOf(*all), 20U);
    const auto sides = projectFromPlanes(*all, "", Faces{0, 2, 3, 4}, bare());
    ASSERT_EQ(countOf(*sides), 20U);
    EXPECT_EQ(idsOf(*sides),
              (Ids{12, 13, 14, 15, 0, 1, 2, 3, 16, 17, 18, 19, 4, 5, 6, 7, 8, 9, 10, 11}));
}

TEST(ProjectFromPlanes, FacesOfOnePlaneThatTouchShareAndOthersDoNot)
{
    // two squares side by side, one apart from them, all seen from +z
    const MeshData mesh = test::meshOf({{0, 0, 0},
                                        {1, 0, 0},
                                        {1, 1, 0},
                                        {0, 1, 0},
                                        {2, 0, 0},
                                        {2, 1, 0},
                                        {5, 0, 0},
                                        {6, 0, 0},
                                        {6, 1, 0}},
                                       {{{0, 1, 2, 3}}, {{6, 7, 8}}, {{1, 4, 5, 2}}});
    const auto result = projectFromPlanes(mesh, "", allFaces(mesh), bare());
    EXPECT_EQ(idsOf(*result), (Ids{0, 1, 2, 3, 6, 7, 8, 1, 4, 5, 2}));
    expectUv(*result, 5, 2, 1);
    expectUv(*result, 8, 6, 1);
}

TEST(ProjectFromPlanes, AFaceBetweenTwoPlanesGoesToTheFirst)
{
    // a square seen from -x and, beside it, one at 45 degrees between -x and +z
    const MeshData mesh =
        test::meshOf({{0, 0, 0}, {0, 0, 1}, {0, 1, 1}, {0, 1, 0}, {1, 0, 2}, {1, 1, 2}},
                     {{{0, 1, 2, 3}}, {{1, 4, 5, 2}}});
    const auto result = projectFromPlanes(mesh, "", allFaces(mesh), bare());
    EXPECT_EQ(idsOf(*result), (Ids{0, 1, 2, 3, 1, 4, 5, 2}));
    expectUv(*result, 4, 2, 0); // from -x u goes along z
}

/// A large square seen from +z, and over its upper edge a strip of a height, bent to a normal.
MeshData squareAndStrip(float height, float back)
{
    return test::meshOf({{0, 0, 0},
                         {10, 0, 0},
                         {10, 10, 0},
                         {0, 10, 0},
                         {10, 10 + height, back},
                         {0, 10 + height, back}},
                        {{{0, 1, 2, 3}}, {{3, 2, 4, 5}}});
}

TEST(ProjectFromPlanes, SmallPiecesGoToLargeOnesUnlessSeenTooSteeply)
{
    // A strip bent back by a slope of 3 : 2 faces up more than to the front, by acos(2 / sqrt 13) =
    // 56 degrees from the front; with 2 : 1 it is 63 degrees.
    const MeshData slanted = squareAndStrip(0.2F, -0.3F);
    const MeshData steep = squareAndStrip(0.2F, -0.4F);
    const MeshData large = squareAndStrip(2, -3);
    PlanesProjection projection = bare();
    EXPECT_EQ(countOf(*projectFromPlanes(slanted, "", Faces{0, 1}, projection)), 6U);
    EXPECT_EQ(countOf(*projectFromPlanes(steep, "", Faces{0, 1}, projection)), 8U);
    EXPECT_EQ(countOf(*projectFromPlanes(large, "", Faces{0, 1}, projection)), 8U);
    projection.joinsSmall = false;
    EXPECT_EQ(countOf(*projectFromPlanes(slanted, "", Faces{0, 1}, projection)), 8U);
}

TEST(ProjectFromPlanes, ThePlanesStandInTheirSpace)
{
    const MeshData mesh = cube();
    PlanesProjection projection = bare();
    projection.toSpace = scaling({2, 4, 8});
    projection.scale = {1, 2, 1};
    const auto result = projectFromPlanes(mesh, "", allFaces(mesh), projection);
    expectUv(*result, 0, -4, -1); // right: z over -4..4, y over -2..2 by halves
    expectUv(*result, 18, 1, 1);  // front
}

TEST(ProjectFromPlanes, OppositesMayBeSeenThrough)
{
    const MeshData mesh = cube();
    PlanesProjection projection = bare();
    projection.mirrorsOpposites = true;
    const auto result = projectFromPlanes(mesh, "", allFaces(mesh), projection);
    // the back (its first corner is up and, seen from the front, left) lies as the front sees it
    expectUv(*result, 20, -0.5, 0.5);
    expectUv(*result, 21, 0.5, 0.5);
}

TEST(ProjectFromPlanes, PlanesOfAllSolidsStandRightHanded)
{
    for (const std::uint32_t count : {4U, 5U, 6U, 8U, 12U}) {
        const auto planes = projectionPlanes(count);
        ASSERT_EQ(planes.size(), count);
        for (const ProjectionPlane& plane : planes) {
            EXPECT_NEAR(length(plane.normal), 1, 1e-12);
            EXPECT_NEAR(length(plane.up), 1, 1e-12);
            EXPECT_NEAR(length(cross(plane.right, plane.up) - plane.normal), 0, 1e-12);
        }
    }
    EXPECT_EQ(projectionPlanes(7).size(), 6U);
}

TEST(ProjectFromPlanes, NumbersThatAreNoneDoNoHarm)
{
    constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
    MeshData mesh = cube();
    auto points = *mesh.points;
    points[3] = {kNan, 0, std::numeric_limits<float>::infinity()};
    mesh.points = std::make_shared<const std::vector<Vec3f>>(points);
    PlanesProjection projection;
    projection.rotate.x = std::numeric_limits<double>::quiet_NaN();
    const auto result = projectFromPlanes(mesh, "", allFaces(mesh), projection);
    EXPECT_TRUE(isConsistent(*result));
    for (const Vec2f& uv : *result->uvSets[0].points) {
        EXPECT_TRUE(std::isfinite(uv.x) && std::isfinite(uv.y));
    }
}

} // namespace
} // namespace host::geometry
