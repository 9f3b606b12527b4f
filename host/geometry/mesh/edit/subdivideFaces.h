// Faces divided into a grid, or into fans about their middles.
#pragma once

#include "host/geometry/mesh/MeshData.h"

#include <cstdint>
#include <memory>
#include <span>

namespace host::geometry {

/// Faces that one operation may make.
inline constexpr std::uint32_t kMaxDividedFaces = 1U << 22;

/// Every edge of the faces (ascending) is halved, and each face becomes a face of four at each of
/// its corners, round a new vertex in its middle; that many times over.
///
/// Numbers  face by face, ascending: a vertex in the middle; for each of its edges in turn that is
///          not halved yet a vertex and a second half; an edge from each of these vertices to the
///          middle; a face for each corner but the first, which keeps the number of the face. They
///          begin at the vertex before the corner. A later time takes all faces of the time before,
///          ascending.
/// Failure  null beyond kMaxDividedFaces.
std::shared_ptr<const MeshData>
subdivideToQuads(const MeshData& mesh, std::span<const std::uint32_t> faces, std::uint32_t times);

/// The same with a triangle over each edge, about the middle; no edge is cut.
std::shared_ptr<const MeshData> subdivideToTriangles(const MeshData& mesh,
                                                     std::span<const std::uint32_t> faces,
                                                     std::uint32_t times);

/// Each of the faces (ascending, taken in that order) becomes a fan of triangles about a new vertex
/// in its middle: the vertex, an edge from each corner to it, and a triangle over each edge, the
/// first one with the number of the face.
std::shared_ptr<const MeshData> fanFaces(const MeshData& mesh,
                                         std::span<const std::uint32_t> faces);

/// Faces of four become grids of u columns and v rows. Columns run along the first edge of a face;
/// where a face before it in the list shares an edge with it, they run as that edge was cut. A face
/// whose opposite edges are cut into different numbers of pieces keeps its corners. Other faces are
/// divided as `subdivideToQuads` does it, where u or v is more than 1.
///
/// Numbers  Edges from the highest number down, each giving its inner vertices and the edges from
///          them on from its start to its end; then faces from the highest number down, with their
///          inner vertices, edges and cells row by row. The first cell keeps the number of the
///          face.
/// Failure  null beyond kMaxDividedFaces.
std::shared_ptr<const MeshData> subdivideToGrids(const MeshData& mesh,
                                                 std::span<const std::uint32_t> faces,
                                                 std::uint32_t u, std::uint32_t v);

} // namespace host::geometry
