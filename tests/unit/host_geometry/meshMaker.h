// Meshes for tests, from lists of vertices.
#pragma once

#include "host/geometry/mesh/buildTopology.h"

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <utility>
#include <vector>

namespace host::geometry::test {

using Loop = std::vector<std::uint32_t>;

/// Faces in the form of files: edges numbered in the order in which the loops first walk them.
struct Lists {
    std::vector<std::int32_t> edges; ///< triples
    std::vector<std::int32_t> corners;
    std::vector<std::uint32_t> loopSizes;
    std::vector<std::uint32_t> faceLoopCounts;
};

/// One face per entry: outer loop, then holes. All edges are smooth (1) or hard (0).
inline Lists listsOf(const std::vector<std::vector<Loop>>& faces, std::int32_t flag)
{
    Lists lists;
    std::map<std::pair<std::uint32_t, std::uint32_t>, std::int32_t> known;
    for (const auto& face : faces) {
        lists.faceLoopCounts.push_back(static_cast<std::uint32_t>(face.size()));
        for (const Loop& loop : face) {
            lists.loopSizes.push_back(static_cast<std::uint32_t>(loop.size()));
            for (std::size_t i = 0; i < loop.size(); ++i) {
                const std::uint32_t a = loop[i];
                const std::uint32_t b = loop[(i + 1) % loop.size()];
                const auto [entry, isNew] = known.try_emplace(
                    std::minmax(a, b), static_cast<std::int32_t>(lists.edges.size() / 3));
                const std::int32_t edge = entry->second;
                if (isNew) {
                    lists.edges.insert(lists.edges.end(), {static_cast<std::int32_t>(a),
                                                           static_cast<std::int32_t>(b), flag});
                }
                const bool isForward =
                    lists.edges[3 * static_cast<std::size_t>(edge)] == static_cast<std::int32_t>(a);
                lists.corners.push_back(isForward ? edge : -edge - 1);
            }
        }
    }
    return lists;
}

/// The same with the edges between the given pairs of vertices of the other kind.
inline void setEdges(Lists& lists,
                     const std::vector<std::pair<std::int32_t, std::int32_t>>& between,
                     std::int32_t flag)
{
    for (std::size_t edge = 0; 3 * edge < lists.edges.size(); ++edge) {
        for (const auto& [a, b] : between) {
            const std::int32_t start = lists.edges[3 * edge];
            const std::int32_t end = lists.edges[3 * edge + 1];
            if (std::minmax(a, b) == std::minmax(start, end)) {
                lists.edges[3 * edge + 2] = flag;
            }
        }
    }
}

inline MeshData meshOfLists(const std::vector<Vec3f>& points, const Lists& lists)
{
    BuiltTopology built = buildTopology(static_cast<std::uint32_t>(points.size()), lists.edges,
                                        {lists.corners, lists.loopSizes, lists.faceLoopCounts});
    EXPECT_TRUE(built.damage.isNone());
    MeshData mesh;
    mesh.topology = std::make_shared<const MeshTopology>(std::move(built.topology));
    mesh.edgeSmooth = shareEdgeFlags(std::move(built.edgeSmooth));
    mesh.points = std::make_shared<const std::vector<Vec3f>>(points);
    EXPECT_TRUE(isConsistent(mesh));
    return mesh;
}

inline MeshData meshOf(const std::vector<Vec3f>& points,
                       const std::vector<std::vector<Loop>>& faces, std::int32_t flag = 0)
{
    return meshOfLists(points, listsOf(faces, flag));
}

/// Corners (-1 -1 1) (1 -1 1) (-1 1 1) (1 1 1) (-1 1 -1) (1 1 -1) (-1 -1 -1) (1 -1 -1) times a
/// half; faces front, top, back, bottom, right, left, seen from outside.
inline const std::vector<Vec3f> kCubePoints{{-.5F, -.5F, .5F},  {.5F, -.5F, .5F},  {-.5F, .5F, .5F},
                                            {.5F, .5F, .5F},    {-.5F, .5F, -.5F}, {.5F, .5F, -.5F},
                                            {-.5F, -.5F, -.5F}, {.5F, -.5F, -.5F}};
inline const std::vector<std::vector<Loop>> kCubeFaces{
    {{0, 1, 3, 2}}, {{2, 3, 5, 4}}, {{4, 5, 7, 6}}, {{6, 7, 1, 0}}, {{1, 7, 5, 3}}, {{6, 0, 2, 4}}};

} // namespace host::geometry::test
