// Meshes with texture coordinates for tests.
#pragma once

#include "tests/unit/host_geometry/meshMaker.h"

#include <string>

namespace host::geometry::test {

inline void addUvSet(MeshData& mesh, const std::string& name, std::vector<Vec2f> points,
                     std::vector<std::int32_t> corners)
{
    mesh.uvSets.push_back({name, std::make_shared<const std::vector<Vec2f>>(std::move(points)),
                           std::make_shared<const std::vector<std::int32_t>>(std::move(corners))});
    EXPECT_TRUE(isConsistent(mesh));
}

/// Two unit squares side by side in the plane z = 0, seen from +z: vertices 0..2 below, 3..5 above,
/// faces (0 1 4 3) and (1 2 5 4), and in the set "map1" one coordinate per vertex, of its number
/// and its place.
inline MeshData twoSquares()
{
    MeshData mesh = meshOf({{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {0, 1, 0}, {1, 1, 0}, {2, 1, 0}},
                           {{{0, 1, 4, 3}}, {{1, 2, 5, 4}}});
    addUvSet(mesh, "map1", {{0, 0}, {1, 0}, {2, 0}, {0, 1}, {1, 1}, {2, 1}},
             {0, 1, 4, 3, 1, 2, 5, 4});
    mesh.currentUvSet = "map1";
    return mesh;
}

using Ids = std::vector<std::int32_t>;

inline const Ids& idsOf(const MeshData& mesh, std::size_t set = 0)
{
    return *mesh.uvSets[set].corners;
}

inline void expectUv(const MeshData& mesh, std::size_t id, double u, double v, std::size_t set = 0)
{
    const Vec2f& point = (*mesh.uvSets[set].points)[id];
    EXPECT_NEAR(point.x, u, 1e-6) << id;
    EXPECT_NEAR(point.y, v, 1e-6) << id;
}

/// The same for what a corner has.
inline void expectCorner(const MeshData& mesh, std::size_t corner, double u, double v,
                         std::size_t set = 0)
{
    const std::int32_t id = idsOf(mesh, set)[corner];
    ASSERT_GE(id, 0) << corner;
    expectUv(mesh, static_cast<std::size_t>(id), u, v, set);
}

} // namespace host::geometry::test
