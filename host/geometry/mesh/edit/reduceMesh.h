// Fewer triangles for nearly the same shape.
#pragma once

#include "host/geometry/mesh/MeshData.h"

#include <cstdint>
#include <memory>
#include <span>

namespace host::geometry {

struct Reduction {
    std::uint32_t triangles = 0; ///< how many of the faces that are reduced are to be left
    std::uint32_t vertices = 0;  ///< how many vertices the mesh is to keep at least
    bool keepsBorders = true;    ///< borders cost a hundred times as much as else
    bool keepsHardEdges = true;  ///< hard edges cost as much as borders
};

/// Triangles that a mesh may have to be reduced.
inline constexpr std::uint32_t kMaxReducedTriangles = 1U << 24;

/// The mesh with faces (ascending) made triangles and reduced by drawing edges into one of their
/// ends, the cheapest first. What an edge costs is the sum of squared distances from the planes
/// that either end has stood for, by their areas (Garland and Heckbert: Surface Simplification
/// Using Quadric Error Metrics, 1997); borders and hard edges count as upright planes. An edge
/// stays where drawing it in would turn a triangle over, tear the surface, or mix texture
/// coordinates of different pieces.
///
/// Numbers  what is left closes up in order.
/// Failure  null beyond kMaxReducedTriangles, or as `MeshRewriter::finish` has it.
std::shared_ptr<const MeshData>
reduceMesh(const MeshData& mesh, std::span<const std::uint32_t> faces, const Reduction& reduction);

} // namespace host::geometry
