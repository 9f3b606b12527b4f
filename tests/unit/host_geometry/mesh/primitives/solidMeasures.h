// What can be measured on any closed mesh.
#pragma once

#include "host/geometry/mesh/MeshData.h"

#include <algorithm>
#include <cstdint>
#include <vector>

namespace host::geometry::test {

using Numbers = std::vector<std::uint32_t>;

inline Numbers faceVertices(const MeshData& mesh, std::uint32_t face)
{
    Numbers vertices;
    const MeshTopology& topology = *mesh.topology;
    for (std::uint32_t c = topology.firstCorner(face); c < topology.endCorner(face); ++c) {
        vertices.push_back(topology.cornerVertex(c));
    }
    return vertices;
}

inline Numbers faceUvs(const MeshData& mesh, std::uint32_t face)
{
    Numbers ids;
    const MeshTopology& topology = *mesh.topology;
    for (std::uint32_t c = topology.firstCorner(face); c < topology.endCorner(face); ++c) {
        ids.push_back(static_cast<std::uint32_t>((*mesh.uvSets[0].corners)[c]));
    }
    return ids;
}

/// Points - edges + faces: 2 for a closed solid without holes, 0 for a ring, 1 for a sheet.
inline std::int64_t eulerNumber(const MeshData& mesh)
{
    return static_cast<std::int64_t>(mesh.points->size()) -
           static_cast<std::int64_t>(mesh.topology->edges.size()) +
           static_cast<std::int64_t>(mesh.topology->faceCount());
}

/// True when the faces walk every edge once each way.
inline bool isClosed(const MeshData& mesh)
{
    std::vector<int> forward(mesh.topology->edges.size());
    std::vector<int> backward(forward.size());
    for (const std::int32_t reference : mesh.topology->corners) {
        if (reference >= 0) {
            ++forward[static_cast<std::size_t>(reference)];
        } else {
            ++backward[static_cast<std::size_t>(-(reference + 1))];
        }
    }
    const auto isOne = [](int n) { return n == 1; };
    return std::all_of(forward.begin(), forward.end(), isOne) &&
           std::all_of(backward.begin(), backward.end(), isOne);
}

/// The sum of the area vectors of all faces: zero for a closed mesh.
inline Vec3d areaVector(const MeshData& mesh, std::uint32_t face)
{
    const Numbers loop = faceVertices(mesh, face);
    Vec3d sum;
    for (std::size_t i = 0; i < loop.size(); ++i) {
        sum = sum + cross(toDouble((*mesh.points)[loop[i]]),
                          toDouble((*mesh.points)[loop[(i + 1) % loop.size()]]));
    }
    return sum * 0.5;
}

inline double areaOf(const MeshData& mesh)
{
    double area = 0;
    for (std::uint32_t face = 0; face < mesh.topology->faceCount(); ++face) {
        area += length(areaVector(mesh, face));
    }
    return area;
}

/// By the divergence theorem, with every face as a fan about its first corner; positive when the
/// faces look outwards.
inline double volumeOf(const MeshData& mesh)
{
    double sum = 0;
    for (std::uint32_t face = 0; face < mesh.topology->faceCount(); ++face) {
        const Numbers loop = faceVertices(mesh, face);
        const Vec3d first = toDouble((*mesh.points)[loop[0]]);
        for (std::size_t i = 2; i < loop.size(); ++i) {
            sum += dot(first, cross(toDouble((*mesh.points)[loop[i - 1]]),
                                    toDouble((*mesh.points)[loop[i]])));
        }
    }
    return sum / 6;
}

inline std::size_t hardEdgeCount(const MeshData& mesh)
{
    const auto& flags = mesh.edgeFlags();
    return static_cast<std::size_t>(std::count(flags.begin(), flags.end(), 0));
}

} // namespace host::geometry::test
