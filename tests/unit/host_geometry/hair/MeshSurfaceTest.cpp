#include "host/geometry/hair/MeshSurface.h"
#include "tests/unit/host_geometry/meshMaker.h"

#include <cmath>
#include <limits>

namespace host::geometry {
namespace {

UvSet uvSet(const std::string& name, std::vector<Vec2f> points, std::vector<std::int32_t> corners)
{
    return {name, std::make_shared<const std::vector<Vec2f>>(std::move(points)),
            std::make_shared<const std::vector<std::int32_t>>(std::move(corners))};
}

void expectNear(const Vec3d& value, const Vec3d& expected, double tolerance = 1e-12)
{
    EXPECT_NEAR(value.x, expected.x, tolerance);
    EXPECT_NEAR(value.y, expected.y, tolerance);
    EXPECT_NEAR(value.z, expected.z, tolerance);
}

/// Two squares of side 2 in z = 0 from x = 0 to 4. The set "map1" gives the left one u 0..0.5 and v
/// 0..1, the right one u 0.5..1; the set "other" gives the left one all of it and the right one
/// nothing.
MeshData twoSquares()
{
    MeshData mesh = test::meshOf({{0, 0, 0}, {2, 0, 0}, {2, 2, 0}, {0, 2, 0}, {4, 0, 0}, {4, 2, 0}},
                                 {{{0, 1, 2, 3}}, {{1, 4, 5, 2}}});
    mesh.uvSets.push_back(uvSet("map1", {{0, 0}, {.5F, 0}, {.5F, 1}, {0, 1}, {1, 0}, {1, 1}},
                                {0, 1, 2, 3, 1, 4, 5, 2}));
    mesh.uvSets.push_back(
        uvSet("other", {{0, 0}, {1, 0}, {1, 1}, {0, 1}}, {0, 1, 2, 3, -1, -1, -1, -1}));
    mesh.currentUvSet = "map1";
    return mesh;
}

// u runs along x at 4 per unit, v along y at 2 per unit.
TEST(MeshSurface, FindsPlacesByTextureCoordinates)
{
    const MeshSurface surface(twoSquares(), "");
    for (const auto& [u, v] : {std::pair(0.1, 0.2), std::pair(0.3, 0.9), std::pair(0.75, 0.5),
                               std::pair(0.5, 0.25), std::pair(0.0, 0.0), std::pair(1.0, 1.0)}) {
        const auto place = surface.at(u, v);
        ASSERT_TRUE(place.has_value()) << u << ' ' << v;
        expectNear(place->position, {4 * u, 2 * v, 0});
        expectNear(place->du, {4, 0, 0});
        expectNear(place->dv, {0, 2, 0});
        expectNear(place->normal, {0, 0, 1});
    }
}

TEST(MeshSurface, GoesByTheSetThatIsAskedFor)
{
    const auto place = MeshSurface(twoSquares(), "other").at(0.75, 0.5);
    ASSERT_TRUE(place.has_value());
    expectNear(place->position, {1.5, 1, 0});
    const auto unknown = MeshSurface(twoSquares(), "nobody's").at(0.75, 0.5);
    ASSERT_TRUE(unknown.has_value());
    expectNear(unknown->position, {3, 1, 0});
}

TEST(MeshSurface, HasNothingBesideItsFaces)
{
    const MeshSurface surface(twoSquares(), "");
    EXPECT_FALSE(surface.at(1.01, 0.5));
    EXPECT_FALSE(surface.at(0.5, -0.2));
    EXPECT_FALSE(surface.at(std::numeric_limits<double>::quiet_NaN(), 0.5));
    EXPECT_FALSE(surface.at(std::numeric_limits<double>::infinity(), 0.5));
    MeshData bare = twoSquares();
    bare.uvSets.clear();
    EXPECT_FALSE(MeshSurface(bare, "map1").at(0.5, 0.5));
}

// Between the smooth normals of a roof's ridge and of its eaves: half-way up a side that rises at
// 45 degrees the two meet at half the angle. Ridge (0 0 1), eaves (-1 0 1) / sqrt 2.
TEST(MeshSurface, BlendsTheNormalsOfCorners)
{
    MeshData mesh = test::meshOf({{0, 0, 0}, {1, 0, 1}, {1, 1, 1}, {0, 1, 0}, {2, 0, 0}, {2, 1, 0}},
                                 {{{0, 1, 2, 3}}, {{1, 4, 5, 2}}}, 1);
    mesh.uvSets.push_back(uvSet("map1", {{0, 0}, {.5F, 0}, {.5F, 1}, {0, 1}, {1, 0}, {1, 1}},
                                {0, 1, 2, 3, 1, 4, 5, 2}));
    mesh.currentUvSet = "map1";
    const auto place = MeshSurface(mesh, "").at(0.25, 0.5);
    ASSERT_TRUE(place.has_value());
    expectNear(place->position, {0.5, 0.5, 0.5}, 1e-7);
    const double half = std::sqrt(0.5);
    expectNear(place->normal, normalized({-half, 0, 1 + half}), 1e-7);
    expectNear(place->du, {2, 0, 2}, 1e-6);
}

// A grid of n * n squares in the unit square: every place is found in its own cell of the index.
TEST(MeshSurface, FindsPlacesInManyFaces)
{
    constexpr std::uint32_t n = 40;
    std::vector<Vec3f> points;
    std::vector<Vec2f> uvs;
    for (std::uint32_t row = 0; row <= n; ++row) {
        for (std::uint32_t column = 0; column <= n; ++column) {
            const float u = static_cast<float>(column) / n;
            const float v = static_cast<float>(row) / n;
            uvs.push_back({u, v});
            points.push_back({10 * u, 5 * v, u * v});
        }
    }
    std::vector<std::vector<test::Loop>> faces;
    std::vector<std::int32_t> ids;
    for (std::uint32_t row = 0; row < n; ++row) {
        for (std::uint32_t column = 0; column < n; ++column) {
            const std::uint32_t low = row * (n + 1) + column;
            const test::Loop loop{low, low + 1, low + n + 2, low + n + 1};
            faces.push_back({loop});
            ids.insert(ids.end(), loop.begin(), loop.end());
        }
    }
    MeshData mesh = test::meshOf(points, faces);
    mesh.uvSets.push_back(uvSet("map1", uvs, ids));
    const MeshSurface surface(mesh, "");
    for (int i = 0; i <= 50; ++i) {
        for (int j = 0; j <= 50; ++j) {
            const double u = i / 50.0;
            const double v = j / 50.0;
            const auto place = surface.at(u, v);
            ASSERT_TRUE(place.has_value()) << u << ' ' << v;
            EXPECT_NEAR(place->position.x, 10 * u, 1e-5);
            EXPECT_NEAR(place->position.y, 5 * v, 1e-5);
            EXPECT_NEAR(place->position.z, u * v, 1e-3);
        }
    }
}

// All faces over the whole square: the index must not multiply them by its cells.
TEST(MeshSurface, StaysSmallWhenFacesLieOverEachOther)
{
    std::vector<std::vector<test::Loop>> faces;
    std::vector<Vec3f> points;
    std::vector<std::int32_t> ids;
    for (std::uint32_t face = 0; face < 2000; ++face) {
        const float z = static_cast<float>(face);
        points.insert(points.end(), {{0, 0, z}, {1, 0, z}, {1, 1, z}, {0, 1, z}});
        faces.push_back({{4 * face, 4 * face + 1, 4 * face + 2, 4 * face + 3}});
        ids.insert(ids.end(), {0, 1, 2, 3});
    }
    MeshData mesh = test::meshOf(points, faces);
    mesh.uvSets.push_back(uvSet("map1", {{0, 0}, {1, 0}, {1, 1}, {0, 1}}, ids));
    const auto place = MeshSurface(mesh, "").at(0.3, 0.6);
    ASSERT_TRUE(place.has_value());
    expectNear(place->position, {0.3, 0.6, 0}, 1e-12); // the first of them
}

} // namespace
} // namespace host::geometry
