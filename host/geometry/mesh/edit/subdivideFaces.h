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
/// Numbers  The edges are taken from the highest number down: each gives a vertex and a second
///          half. So are the faces: each gives a vertex in the middle, an edge from the middle of
///          each of its edges in turn, and a face for each corner but the first, which keeps the
///          number of the face.
/// Failure  null beyond kMaxDividedFaces.
std::shared_ptr<const MeshData>
subdivideToQuads(const MeshData& mesh, std::span<const std::uint32_t> faces, std::uint32_t times);

/// The same with a triangle over each edge, about the middle.
std::shared_ptr<const MeshData> subdivideToTriangles(const MeshData& mesh,
                                                     std::span<const std::uint32_t> faces,
                                                     std::uint32_t times);

/// Each of the faces (ascending, taken in that order) becomes a fan of triangles about a new vertex
/// in its middle: the vertex, an edge from each corner to it, and a triangle over each edge, the
/// first one with the number of the face.
std::shared_ptr<const MeshData> fanFaces(const MeshData& mesh,
                                         std::span<const std::uint32_t> faces);

/// Faces of four become grids of u columns along their first edge and v rows; other faces are
/// divided as `subdivideToQuads` does it, where u or v is more than 1.
///
/// Numbers  As there: edges from the highest number down, each giving its inner vertices and the
///          edges from them on from its start to its end; then faces from the highest number down,
///          with their inner vertices, edges and cells row by row. The first cell keeps the number
///          of the face.
/// Failure  null beyond kMaxDividedFaces.
std::shared_ptr<const MeshData> subdivideToGrids(const MeshData& mesh,
                                                 std::span<const std::uint32_t> faces,
                                                 std::uint32_t u, std::uint32_t v);

} // namespace host::geometry
