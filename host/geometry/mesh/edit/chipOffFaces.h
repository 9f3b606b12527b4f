// Faces taken off a mesh, or copies of them, and moved.
#pragma once

#include "host/geometry/mesh/edit/ComponentMotion.h"

#include <memory>

namespace host::geometry {

struct ChipOff {
    ComponentMotion motion;
    bool isTogether = true; ///< faces that are taken off stay joined to each other
    bool duplicates = true; ///< copies of the faces are made, and those are moved
};

/// The mesh with faces (ascending) taken off.
///
/// Numbers  Faces that are taken off keep their numbers; copies come last, in order. Vertices and
///          edges that the rest needs, and with isTogether off those that an earlier face has, stay
///          there; the faces get new ones behind all others, in the order in which a walk over
///          faces, corners and the two ends of each edge first meets them. What only the faces have
///          keeps its number. Copies have texture coordinates of their own, likewise in order.
/// Places   as in `extrudeFaces`.
/// Failure  null as `MeshRewriter::finish` has it.
std::shared_ptr<const MeshData>
chipOffFaces(const MeshData& mesh, std::span<const std::uint32_t> faces, const ChipOff& chipOff);

} // namespace host::geometry
