// Faces turned round, so that their other side is the front.
#pragma once

#include "host/geometry/mesh/MeshData.h"

#include <cstdint>
#include <memory>
#include <span>

namespace host::geometry {

/// The numbers are those of the attribute normalMode.
enum class TurnMode : std::uint8_t {
    Reverse = 0,            ///< the given faces
    Propagate = 1,          ///< faces joined to the given ones, where they face the other way
    Conform = 2,            ///< the fewer ones of given faces that are joined and face two ways
    ReverseAndCut = 3,      ///< the given faces, which get borders of their own
    ReverseAndPropagate = 4 ///< the given faces and what is joined to them the same way round
};

/// Faces are joined where an edge has exactly two of them.
///
/// A turned face keeps its first corner; vertices, edges, faces and texture coordinates keep their
/// numbers. Where turned faces are cut off, they get new vertices and edges after the old ones, in
/// the order of the old. `turnsLocked`: locked normals of turned faces change sign.
std::shared_ptr<const MeshData> turnFaces(const MeshData& mesh,
                                          std::span<const std::uint32_t> faces, TurnMode mode,
                                          bool turnsLocked);

} // namespace host::geometry
