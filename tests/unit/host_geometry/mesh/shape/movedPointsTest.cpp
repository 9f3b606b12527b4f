// Vertices averaged, and components moved, on a cube and a square grid.
#include "host/geometry/mesh/normals.h"
#include "host/geometry/mesh/shape/averageVertices.h"
#include "host/geometry/mesh/shape/moveComponents.h"
#include "tests/unit/host_geometry/meshMaker.h"

#include <numbers>

namespace host::geometry {
namespace {

using test::meshOf;

MeshData cube()
{
    return meshOf(test::kCubePoints, test::kCubeFaces);
}

void expectPoint(const MeshData& mesh, std::size_t vertex, const Vec3d& expected)
{
    const Vec3f& point = (*mesh.points)[vertex];
    EXPECT_NEAR(point.x, expected.x, 1e-6) << vertex;
    EXPECT_NEAR(point.y, expected.y, 1e-6) << vertex;
    EXPECT_NEAR(point.z, expected.z, 1e-6) << vertex;
}

TEST(AverageVertices, OneStepOnACube)
{
    // The neighbours of a corner p have the mean p/3. b = p/3 - p = -2/3 p, the neighbours' b have
    // the mean -2/9 p. The corner goes to p/3 + beta 2/3 p + (1 - beta) 2/9 p.
    const std::vector<std::uint32_t> all{0, 1, 2, 3, 4, 5, 6, 7};
    for (const double beta : {0.0, 0.7, 1.0}) {
        const auto averaged = averageVertices(cube(), all, 1, 0.5, beta);
        const double factor = 1.0 / 3 + beta * 2 / 3 + (1 - beta) * 2 / 9;
        for (std::size_t vertex = 0; vertex < 8; ++vertex) {
            expectPoint(*averaged, vertex, toDouble(test::kCubePoints[vertex]) * factor);
        }
    }
}

TEST(AverageVertices, MovesOnlyTheGivenOnesAndNotWithoutSteps)
{
    const std::vector<std::uint32_t> one{3};
    const auto averaged = averageVertices(cube(), one, 5, 0.5, 0.7);
    for (std::size_t vertex = 0; vertex < 8; ++vertex) {
        EXPECT_EQ((*averaged->points)[vertex] == test::kCubePoints[vertex], vertex != 3);
    }
    EXPECT_EQ(*averageVertices(cube(), one, 0, 0.5, 0.7)->points, test::kCubePoints);
}

TEST(MoveComponents, TogetherAboutAPivotInTheGivenSpace)
{
    ComponentMove move;
    move.common = translation({-1, 0, 0}) * scaling({2, 2, 2}) * translation({1, 0, 0}) *
                  translation({0, 5, 0});
    move.space = translation({10, 0, 0});
    const auto moved =
        moveComponents(cube(), ComponentKind::Vertex, std::vector<std::uint32_t>{1}, move);
    // (0.5 -0.5 0.5) is at 10.5 there; twice as far from 1 that is 20; back it is 10.
    expectPoint(*moved, 1, {10, 4, 1});
    EXPECT_EQ((*moved->points)[0], test::kCubePoints[0]);
}

TEST(MoveComponents, FacesAlongTheirNormals)
{
    ComponentMove move;
    move.localTranslate = {0, 0, 2};
    const auto top =
        moveComponents(cube(), ComponentKind::Face, std::vector<std::uint32_t>{1}, move);
    for (const std::size_t vertex : {2U, 3U, 4U, 5U}) {
        expectPoint(*top, vertex, toDouble(test::kCubePoints[vertex]) + Vec3d{0, 2, 0});
    }
    // Front and top share 2 and 3, which go half the way of each.
    const auto both =
        moveComponents(cube(), ComponentKind::Face, std::vector<std::uint32_t>{0, 1}, move);
    expectPoint(*both, 3, {0.5, 1.5, 1.5});
    expectPoint(*both, 1, {0.5, -0.5, 2.5});
}

TEST(MoveComponents, VerticesAndEdgesAlongTheNormalsOfTheirFaces)
{
    ComponentMove move;
    move.localTranslate = {0, 0, 1};
    const double third = 1 / std::numbers::sqrt3;
    const auto corner =
        moveComponents(cube(), ComponentKind::Vertex, std::vector<std::uint32_t>{3}, move);
    expectPoint(*corner, 3, {0.5 + third, 0.5 + third, 0.5 + third});
    // Edge 2 runs between top and front.
    const auto edge =
        moveComponents(cube(), ComponentKind::Edge, std::vector<std::uint32_t>{2}, move);
    const double half = std::numbers::sqrt2 / 2;
    expectPoint(*edge, 2, {-0.5, 0.5 + half, 0.5 + half});
    expectPoint(*edge, 3, {0.5, 0.5 + half, 0.5 + half});
}

TEST(MoveComponents, FacesScaledAndTurnedAboutTheirCentres)
{
    ComponentMove move;
    move.localScale = {0.5, 0.5, 1};
    const std::vector<std::uint32_t> top{1};
    const auto smaller = moveComponents(cube(), ComponentKind::Face, top, move);
    expectPoint(*smaller, 3, {0.25, 0.5, 0.25});
    move.localScale = {1, 1, 1};
    move.localRotate = {0, 0, std::numbers::pi / 2};
    const auto turned = moveComponents(cube(), ComponentKind::Face, top, move);
    // Seen from above, against the clock: (x, z) = (0.5, 0.5) goes to (0.5, -0.5).
    expectPoint(*turned, 3, {0.5, 0.5, -0.5});
}

} // namespace
} // namespace host::geometry
