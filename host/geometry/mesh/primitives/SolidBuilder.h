// Gathers a polygon solid in its final numbering.
#pragma once

#include "host/geometry/mesh/MeshData.h"
#include "host/geometry/mesh/primitives/orientation.h"

#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

namespace host::geometry {

/// Where a solid stands and what its texture coordinates are called.
struct SolidPlacement {
    Vec3d axis{0, 1, 0};       ///< what the y axis of the solid turns to; any length
    double heightBaseline = 0; ///< the height that comes to the origin: 0 the middle, -1 the lower
                               ///< end, 1 the upper one
    std::string_view uvSetName = "map1";
};

/// Points, edges, faces and texture coordinates in the order in which they are added. Nothing is
/// checked: the caller adds only what fits.
class SolidBuilder {
public:
    std::uint32_t addPoint(const Vec3d& point);
    std::uint32_t addEdge(std::uint32_t start, std::uint32_t end, bool isSmooth);
    std::uint32_t addUv(float u, float v);
    /// The next corner of the face: the edge that leaves it, forwards or backwards.
    void addForward(std::uint32_t edge, std::uint32_t uv = 0);
    void addBackward(std::uint32_t edge, std::uint32_t uv = 0);
    void endFace();
    /// Where the faces are given by their vertices alone: edges in the order in which the faces
    /// first walk them, all of the same kind. The faces' corners follow, without a uv when
    /// `uvs` is empty.
    void addFaces(const std::vector<std::vector<std::uint32_t>>& faces,
                  const std::vector<std::vector<std::uint32_t>>& uvs, bool isSmooth);

    std::uint32_t pointCount() const { return static_cast<std::uint32_t>(m_points.size()); }
    std::uint32_t uvCount() const { return static_cast<std::uint32_t>(m_uvs.size()); }
    std::vector<Vec3d>& points() { return m_points; }
    const MeshTopology& topology() const { return m_topology; }

    /// The mesh, turned from `from` to the axis of the placement and raised by `lift` before.
    /// Texture coordinates only when any were added.
    std::shared_ptr<const MeshData> finish(const SolidPlacement& placement, double lift,
                                           SolidUp up = SolidUp::Y);

private:
    std::vector<Vec3d> m_points;
    MeshTopology m_topology;
    std::vector<Vec2f> m_uvs;
    std::vector<std::int32_t> m_uvCorners;
};

} // namespace host::geometry
