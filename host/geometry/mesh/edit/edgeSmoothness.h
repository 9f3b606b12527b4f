// New edges are soft or hard by the angle between their faces, which is known only when the mesh is
// done: they carry a mark until then.
#pragma once

#include "host/geometry/mesh/MeshData.h"
#include "host/geometry/mesh/edit/MeshRewriter.h"

#include <memory>

namespace host::geometry {

/// In `MeshRewriter::edgeSmooth`: to be decided by the angle.
inline constexpr std::uint8_t kSmoothByAngle = 2;

inline void markSmoothByAngle(MeshRewriter& rewriter, std::uint32_t edge)
{
    if (edge < rewriter.edgeSmooth().size()) {
        rewriter.edgeSmooth()[edge] = kSmoothByAngle;
    }
}

/// The mesh with its marked edges decided: smooth where the normals of two faces differ by `angle`
/// (radians) at most, hard on borders and where more than two faces meet. Null stays null.
std::shared_ptr<const MeshData> withSmoothEdges(std::shared_ptr<const MeshData> mesh, double angle);

} // namespace host::geometry
