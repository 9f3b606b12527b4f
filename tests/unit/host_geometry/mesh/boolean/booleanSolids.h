// Solids for tests of booleans, and what can be measured on their results.
#pragma once

#include "host/geometry/mesh/boolean/booleanOf.h"
#include "tests/unit/host_geometry/mesh/edit/flatMesh.h"

#include <algorithm>

namespace host::geometry::test {

inline UnitedMesh placed(const MeshData& mesh, const Vec3d& at)
{
    return {&mesh, translation(at)};
}

/// The volume by the divergence theorem: each face is taken as the cone from its first corner over
/// all of its loops.
inline double volumeOf(const MeshData& mesh)
{
    double sixfold = 0;
    for (std::uint32_t face = 0; face < mesh.topology->faceCount(); ++face) {
        const std::vector<Loop> loops = loopsOf(mesh, face);
        const Vec3d tip = toDouble((*mesh.points)[loops[0][0]]);
        for (const Loop& loop : loops) {
            for (std::size_t i = 0; i < loop.size(); ++i) {
                sixfold += dot(tip, cross(toDouble((*mesh.points)[loop[i]]),
                                          toDouble((*mesh.points)[loop[(i + 1) % loop.size()]])));
            }
        }
    }
    return sixfold / 6;
}

/// Whether every edge is walked once each way.
inline bool isClosed(const MeshData& mesh)
{
    const NumberLists corners = cornersOfEdges(*mesh.topology);
    for (std::uint32_t edge = 0; edge < mesh.topology->edges.size(); ++edge) {
        const auto both = corners.of(edge);
        if (both.size() != 2 ||
            (mesh.topology->corners[both[0]] >= 0) == (mesh.topology->corners[both[1]] >= 0)) {
            return false;
        }
    }
    return true;
}

/// The number of the point at a place; kNone where there is none.
inline std::uint32_t pointAt(const MeshData& mesh, const Vec3f& place)
{
    const auto found = std::find(mesh.points->begin(), mesh.points->end(), place);
    return found == mesh.points->end() ? kNone
                                       : static_cast<std::uint32_t>(found - mesh.points->begin());
}

inline std::size_t hardEdges(const MeshData& mesh)
{
    const EdgeFlags flags = mesh.edgeFlags();
    return static_cast<std::size_t>(std::count(flags.begin(), flags.end(), std::uint8_t{0}));
}

} // namespace host::geometry::test
