// One set of texture coordinates of a mesh, while an operation changes it.
#pragma once

#include "host/geometry/mesh/MeshData.h"
#include "host/geometry/mesh/edit/DisjointSets.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace host::geometry {

/// The name of the set that a mesh without any gets.
inline constexpr std::string_view kUsualUvSetName = "map1";

/// The set of the name; the current one where the name is empty, and the first where none is the
/// current one. None where the mesh does not have it.
std::optional<std::size_t> findUvSet(const MeshData& mesh, std::string_view name);

/// How many texture coordinates a set has.
std::size_t uvCount(const UvSet& set);

/// Points and ids of a set as copies to be changed; all else of the mesh is shared with the result.
class UvEditor {
public:
    /// `mesh` must be consistent and outlive the editor; `set` is one of its sets, or their number
    /// for an empty new one with the name.
    UvEditor(const MeshData& mesh, std::size_t set, std::string_view newName = {});

    const MeshTopology& topology() const { return *m_mesh.topology; }
    std::vector<Vec2f>& points() { return m_points; }
    /// One id for each corner of the topology, -1 for none.
    std::vector<std::int32_t>& corners() { return m_corners; }

    /// A new id, behind all others; those of a mesh are fewer than 2^31.
    std::int32_t add(const Vec2f& point);
    /// Takes the coordinates away from the corners of faces.
    void clear(std::span<const std::uint32_t> faces);
    /// The ids that the corners of the faces (ascending) have, ascending.
    std::vector<std::uint32_t> idsOfFaces(std::span<const std::uint32_t> faces) const;
    /// Ids that came together in a set become the lowest of them, in their middle; the others are
    /// unused then.
    void merge(DisjointSets& sets);
    /// Takes away what no corner has; what stays closes up in order.
    void removeUnused();

    /// The mesh with the set as it is now, which makes it the current one where it is new.
    std::shared_ptr<const MeshData> finish();

private:
    const MeshData& m_mesh;
    std::size_t m_set;
    std::string_view m_newName;
    std::vector<Vec2f> m_points;
    std::vector<std::int32_t> m_corners;
};

} // namespace host::geometry
