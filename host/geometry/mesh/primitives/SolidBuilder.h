// Gathers a polygon solid in its final numbering.
#pragma once

#include "host/geometry/mesh/MeshData.h"
#include "host/geometry/mesh/primitives/orientation.h"

#include <cstdint>
#include <initializer_list>
#include <memory>
#include <span>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace host::geometry {

/// Faces one after the other: `corners` has their vertices, `ends` the number of corners up to and
/// with each face.
struct PolygonList {
    std::vector<std::uint32_t> corners;
    std::vector<std::uint32_t> ends;

    void add(std::initializer_list<std::uint32_t> face)
    {
        corners.insert(corners.end(), face);
        endFace();
    }
    void endFace() { ends.push_back(static_cast<std::uint32_t>(corners.size())); }
    std::uint32_t size() const { return static_cast<std::uint32_t>(ends.size()); }
    std::span<const std::uint32_t> face(std::uint32_t number) const
    {
        const std::uint32_t first = number == 0 ? 0 : ends[number - 1];
        return std::span(corners).subspan(first, ends[number] - first);
    }
};

/// Numbers of edges by their vertices, in the order in which they are first met.
class EdgeNumbers {
public:
    struct Found {
        std::uint32_t edge;
        bool isNew;
    };
    Found find(std::uint32_t start, std::uint32_t end)
    {
        const std::uint64_t key =
            start < end ? std::uint64_t{start} << 32 | end : std::uint64_t{end} << 32 | start;
        const auto [entry, isNew] =
            m_numbers.try_emplace(key, static_cast<std::uint32_t>(m_numbers.size()));
        return {entry->second, isNew};
    }

private:
    std::unordered_map<std::uint64_t, std::uint32_t> m_numbers;
};

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
    /// All faces so far become one: the first is its outer loop, the others are its holes.
    void joinLoops();
    /// Faces given by their vertices: edges in the order in which the faces first walk them. Edges
    /// of two faces are smooth or hard as `isSmooth` says, those of one face are hard. `uvs`: one
    /// id a corner, or empty.
    void addFaces(const PolygonList& faces, std::span<const std::uint32_t> uvs, bool isSmooth);

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
    EdgeFlags m_edgeSmooth;
    std::vector<Vec2f> m_uvs;
    std::vector<std::int32_t> m_uvCorners;
};

} // namespace host::geometry
