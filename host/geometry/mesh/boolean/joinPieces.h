// What is left of solids, as faces again.
#pragma once

#include "host/geometry/mesh/MeshData.h"
#include "host/geometry/mesh/boolean/Solid.h"
#include "host/geometry/mesh/triangulate.h"

#include <cstdint>
#include <memory>
#include <span>

namespace host::geometry {

/// The meshes of which a solid was cut, in one, with the triangles that are its sources.
struct CutMeshes {
    const MeshData& mesh;
    const Triangulation& triangles;
    const SolidGrid& grid;
    std::span<const std::uint32_t> firstFaces; ///< of each part; ascending, the first is 0
    std::span<const std::uint8_t> areWhole;    ///< of each part: 1 where all of its faces stay as
                                               ///< they are, whatever triangles there are of it
};

/// The mesh of the triangles: those of one face that hang together become one face again, in the
/// order and with the numbers that `booleanOf` tells. New vertices within a straight piece of the
/// border of two faces go. Null where the triangles do not close or a limit of meshes is met.
std::shared_ptr<const MeshData> joinPieces(const CutMeshes& before, const Solid& left);

} // namespace host::geometry
