// Flat meshes for tests of operations, and what can be read off meshes.
#pragma once

#include "host/geometry/mesh/edit/MeshLinks.h"
#include "host/geometry/mesh/polygon.h"
#include "tests/unit/host_geometry/meshMaker.h"

#include <random>
#include <utility>

namespace host::geometry::test {

using Numbers = std::vector<std::uint32_t>;
using Pairs = std::vector<std::pair<std::uint32_t, std::uint32_t>>;
using SharedMesh = std::shared_ptr<const MeshData>;

/// Squares of side 1 in the plane z = 0, row by row from below: vertex x + y (width + 1) stands at
/// (x, y), face x + y width begins there and runs counter-clockwise.
inline MeshData grid(std::uint32_t width, std::uint32_t height)
{
    std::vector<Vec3f> points;
    std::vector<std::vector<Loop>> faces;
    for (std::uint32_t y = 0; y <= height; ++y) {
        for (std::uint32_t x = 0; x <= width; ++x) {
            points.push_back({static_cast<float>(x), static_cast<float>(y), 0});
            if (x < width && y < height) {
                const std::uint32_t v = x + y * (width + 1);
                faces.push_back({{v, v + 1, v + width + 2, v + width + 1}});
            }
        }
    }
    return meshOf(points, faces);
}

inline MeshData cube()
{
    return meshOf(kCubePoints, kCubeFaces);
}

/// A uv set with one point for each corner, at (corner, 0).
inline void addCornerUvs(MeshData& mesh, const std::string& name = "map1")
{
    std::vector<Vec2f> points;
    std::vector<std::int32_t> ids;
    for (std::size_t i = 0; i < mesh.topology->corners.size(); ++i) {
        points.push_back({static_cast<float>(i), 0});
        ids.push_back(static_cast<std::int32_t>(i));
    }
    mesh.uvSets.push_back({name, std::make_shared<const std::vector<Vec2f>>(points),
                           std::make_shared<const std::vector<std::int32_t>>(ids)});
}

inline void addGroup(MeshData& mesh, std::int32_t id, Numbers faces)
{
    mesh.groups.push_back({id, std::make_shared<const Numbers>(std::move(faces))});
}

inline void addPointGroup(MeshData& mesh, std::int32_t id, Numbers points)
{
    mesh.pointGroups.push_back({id, std::make_shared<const Numbers>(std::move(points))});
}

/// The vertices of every loop of a face.
inline std::vector<Loop> loopsOf(const MeshData& mesh, std::uint32_t face)
{
    const MeshTopology& topology = *mesh.topology;
    std::vector<Loop> loops;
    for (std::uint32_t loop = topology.firstLoop(face); loop < topology.firstLoop(face + 1);
         ++loop) {
        loops.emplace_back();
        for (std::uint32_t c = topology.loopStart[loop]; c < topology.loopStart[loop + 1]; ++c) {
            loops.back().push_back(topology.cornerVertex(c));
        }
    }
    return loops;
}

inline std::vector<Loop> outerLoops(const MeshData& mesh)
{
    std::vector<Loop> loops;
    for (std::uint32_t face = 0; face < mesh.topology->faceCount(); ++face) {
        loops.push_back(loopsOf(mesh, face).front());
    }
    return loops;
}

/// The ends of each edge, the lower first.
inline Pairs edgesOf(const MeshData& mesh)
{
    Pairs pairs;
    for (const MeshEdge& edge : mesh.topology->edges) {
        pairs.emplace_back(std::min(edge.start, edge.end), std::max(edge.start, edge.end));
    }
    return pairs;
}

/// The area vectors of all loops, summed: holes count against their faces.
inline Vec3d totalArea(const MeshData& mesh)
{
    Vec3d sum;
    for (std::uint32_t face = 0; face < mesh.topology->faceCount(); ++face) {
        for (const Loop& loop : loopsOf(mesh, face)) {
            std::vector<Vec3d> points;
            for (const std::uint32_t vertex : loop) {
                points.push_back(toDouble((*mesh.points)[vertex]));
            }
            sum = sum + areaVector(points);
        }
    }
    return sum;
}

/// Six times the volume that a closed mesh encloses, by the tetrahedra over its loops' fans.
inline double sixVolumes(const MeshData& mesh)
{
    double sum = 0;
    for (const Loop& loop : outerLoops(mesh)) {
        for (std::size_t i = 2; i < loop.size(); ++i) {
            sum +=
                dot(toDouble((*mesh.points)[loop[0]]), cross(toDouble((*mesh.points)[loop[i - 1]]),
                                                             toDouble((*mesh.points)[loop[i]])));
        }
    }
    return sum;
}

/// V - E + F.
inline int eulerNumber(const MeshData& mesh)
{
    return static_cast<int>(mesh.topology->vertexCount) -
           static_cast<int>(mesh.topology->edges.size()) +
           static_cast<int>(mesh.topology->faceCount());
}

/// Every edge has a face, every vertex an edge.
inline bool hasNothingLoose(const MeshData& mesh)
{
    const NumberLists corners = cornersOfEdges(*mesh.topology);
    const NumberLists edges = edgesOfVertices(*mesh.topology);
    for (std::uint32_t edge = 0; edge < mesh.topology->edges.size(); ++edge) {
        if (corners.of(edge).empty()) {
            return false;
        }
    }
    for (std::uint32_t vertex = 0; vertex < mesh.topology->vertexCount; ++vertex) {
        if (edges.of(vertex).empty()) {
            return false;
        }
    }
    return true;
}

/// Some of the numbers below `count`, each with a chance of one in `oneOf`.
inline Numbers someOf(std::size_t count, std::uint32_t oneOf, std::mt19937& random)
{
    Numbers some;
    for (std::uint32_t i = 0; i < count; ++i) {
        if (random() % oneOf == 0) {
            some.push_back(i);
        }
    }
    return some;
}

} // namespace host::geometry::test
