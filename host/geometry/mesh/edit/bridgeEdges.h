// Faces between two borders.
#pragma once

#include "host/geometry/mesh/MeshData.h"
#include "host/geometry/mesh/edit/MeshLinks.h"

#include <memory>
#include <span>

namespace host::geometry {

/// Faces that one operation may make.
inline constexpr std::uint32_t kMaxBridgeFaces = 1U << 22;

struct Bridging {
    std::uint32_t startVertex1 = kNone; ///< of the first border; kNone: of its lowest edge
    std::uint32_t startVertex2 = kNone; ///< of the second border; kNone: the nearest to the first
    std::int32_t shift = 0;             ///< places by which the second start moves on
    std::uint32_t divisions = 0;        ///< loops between the borders
    double smoothingAngle = 0;          ///< radians; up to which the new edges are smooth
};

/// The mesh with straight rows of faces of four between two chains or loops of border edges
/// (ascending, all of one face each) of equal length.
///
/// Numbers  Everything keeps its number. New vertices follow loop by loop from the first border on,
///          then the edges and faces in the order in which a walk along the first border, and from
///          it to the second, makes them. New faces have no texture coordinates.
/// Failure  null where the edges are not two such borders, beyond kMaxBridgeFaces, or as
///          `MeshRewriter::finish` has it.
std::shared_ptr<const MeshData>
bridgeEdges(const MeshData& mesh, std::span<const std::uint32_t> edges, const Bridging& bridging);

} // namespace host::geometry
