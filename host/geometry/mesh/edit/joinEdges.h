// Border edges that become one, and parts that fall into points.
#pragma once

#include "host/geometry/mesh/edit/joinVertices.h"

namespace host::geometry {

/// Where two edges that are merged come to lie; the numbers are those of the attribute mergeMode.
enum class EdgeMerging : std::uint8_t { AtFirst = 0, Between = 1, AtSecond = 2 };

/// The mesh with two border edges made one, so that their faces look to the same side.
///
/// Numbers  as in `joinVertices`: of each two vertices, and of the edges, the lower number stays.
/// Failure  null where one of them is no edge of one face, or they are the same.
std::shared_ptr<const MeshData> mergeEdges(const MeshData& mesh, std::uint32_t first,
                                           std::uint32_t second, EdgeMerging merging);

/// The mesh with those of some border edges (ascending numbers) made one that lie on each other:
/// their ends within a distance in pairs, and their faces looking to the same side. Ends come
/// together at their mean.
///
/// Input    places: of all vertices, where distances are measured.
std::shared_ptr<const MeshData> sewEdges(const MeshData& mesh, std::span<const std::uint32_t> edges,
                                         std::span<const Vec3d> places, double distance);

/// The mesh with edges (ascending numbers) drawn together: those that hang together fall into one
/// vertex, the lowest of theirs, at the mean of their points.
std::shared_ptr<const MeshData> collapseEdges(const MeshData& mesh,
                                              std::span<const std::uint32_t> edges);
/// The same with faces.
std::shared_ptr<const MeshData> collapseFaces(const MeshData& mesh,
                                              std::span<const std::uint32_t> faces);

} // namespace host::geometry
