// What can be measured of a mesh of triangles, and what holds for every one.
#pragma once

#include "host/geometry/mesh/renderMesh.h"

#include <gtest/gtest.h>

#include <array>
#include <map>
#include <set>

namespace test {

using host::Vec3d;
using host::Vec3f;
using host::geometry::RenderMesh;

inline Vec3d areaVector(const RenderMesh& mesh, std::size_t first)
{
    const Vec3d a = toDouble(mesh.positions[mesh.indices[first]]);
    return cross(toDouble(mesh.positions[mesh.indices[first + 1]]) - a,
                 toDouble(mesh.positions[mesh.indices[first + 2]]) - a) *
           0.5;
}

inline double areaOf(const RenderMesh& mesh)
{
    double sum = 0;
    for (std::size_t i = 0; i < mesh.indices.size(); i += 3) {
        sum += length(areaVector(mesh, i));
    }
    return sum;
}

/// By the divergence theorem; positive when the triangles of a closed mesh turn outward.
inline double volumeOf(const RenderMesh& mesh)
{
    double sum = 0;
    for (std::size_t i = 0; i < mesh.indices.size(); i += 3) {
        sum += dot(toDouble(mesh.positions[mesh.indices[i]]), areaVector(mesh, i)) / 3;
    }
    return sum;
}

/// Triangles that turn against the normal of one of their vertices.
inline std::size_t countAgainst(const RenderMesh& mesh)
{
    std::size_t count = 0;
    for (std::size_t i = 0; i < mesh.indices.size(); i += 3) {
        for (std::size_t k = i; k < i + 3; ++k) {
            count += dot(areaVector(mesh, i), toDouble(mesh.normals[mesh.indices[k]])) < 0 ? 1 : 0;
        }
    }
    return count;
}

using Place = std::array<float, 3>;
using PlaceEdge = std::pair<Place, Place>;

/// Directed edges that have no twin, by position; every directed edge may occur once.
inline std::set<PlaceEdge> openEdgeSet(const RenderMesh& mesh)
{
    std::set<PlaceEdge> edges;
    const auto place = [&](std::size_t i) {
        const Vec3f& p = mesh.positions[mesh.indices[i]];
        return Place{p.x + 0.0F, p.y + 0.0F, p.z + 0.0F};
    };
    for (std::size_t i = 0; i < mesh.indices.size(); i += 3) {
        for (std::size_t k = 0; k < 3; ++k) {
            EXPECT_TRUE(edges.insert({place(i + k), place(i + (k + 1) % 3)}).second);
        }
    }
    std::set<PlaceEdge> open;
    for (const PlaceEdge& edge : edges) {
        if (edges.count({edge.second, edge.first}) == 0) {
            open.insert(edge);
        }
    }
    return open;
}
inline std::size_t openEdges(const RenderMesh& mesh)
{
    return openEdgeSet(mesh).size();
}

/// Arrays fit each other, normals have unit length, no triangle has two corners at one place, every
/// vertex is used.
inline void expectSound(const RenderMesh& mesh)
{
    ASSERT_EQ(mesh.normals.size(), mesh.positions.size());
    ASSERT_EQ(mesh.uvs.size(), mesh.positions.size());
    ASSERT_EQ(mesh.indices.size() % 3, 0U);
    const auto triangles = static_cast<std::uint32_t>(mesh.indices.size() / 3);
    EXPECT_EQ(mesh.faceFirstTriangle, (std::vector<std::uint32_t>{0, triangles}));
    std::vector<bool> isUsed(mesh.positions.size());
    for (const std::uint32_t index : mesh.indices) {
        ASSERT_LT(index, mesh.positions.size());
        isUsed[index] = true;
    }
    for (std::size_t i = 0; i < mesh.positions.size(); ++i) {
        EXPECT_TRUE(isUsed[i]);
        EXPECT_NEAR(length(toDouble(mesh.normals[i])), 1, 1e-5);
        EXPECT_TRUE(mesh.uvs[i].x >= 0 && mesh.uvs[i].x <= 1 && mesh.uvs[i].y >= 0 &&
                    mesh.uvs[i].y <= 1);
    }
    for (std::size_t i = 0; i < mesh.indices.size(); i += 3) {
        const Vec3f a = mesh.positions[mesh.indices[i]];
        const Vec3f b = mesh.positions[mesh.indices[i + 1]];
        const Vec3f c = mesh.positions[mesh.indices[i + 2]];
        EXPECT_FALSE(a == b || b == c || c == a);
    }
}

} // namespace test
