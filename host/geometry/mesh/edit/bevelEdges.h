// Edges replaced by strips of faces.
#pragma once

#include "host/geometry/mesh/MeshData.h"
#include "host/math/Matrix4.h"

#include <memory>
#include <span>

namespace host::geometry {

/// Faces that one operation may make.
inline constexpr std::uint32_t kMaxBevelFaces = 1U << 22;

struct Beveling {
    Matrix4 toSpace;         ///< from the object to the space in which lengths are
    bool isFraction = false; ///< the offset is a part of the most that is possible
    double offset = 0.2;     ///< how far the faces step back from the edges: a length or that part
    bool isFitted = true;    ///< a length is no more than possible
    std::uint32_t segments = 1;
    double depth = 1;          ///< 1 round, 0 flat, -1 hollow
    double smoothingAngle = 0; ///< radians; up to which the new edges are smooth
};

struct Beveled {
    std::shared_ptr<const MeshData> mesh;
    bool isExact = true; ///< false where corners have fewer faces than they should
};

/// The mesh with edges (ascending) beveled. Edges without two faces are left out.
///
/// Numbers  What no bevel touches comes first and closes up: vertices, edges and faces. Vertices go
///          away where edges are beveled; in their place come new ones, at both ends of each edge
///          in turn: the outer ones counter-clockwise, then those of the round between. Edges:
///          those whose vertices have one beveled edge at most stay in order. Where all vertices
///          are such, new edges and faces of the faces that lost a vertex come next, in order, then
///          those of the strips, by the edges. Otherwise first come those of the strips, chain
///          after chain: a ring is walked from its lowest vertex along the lower one of its edges,
///          but begins with the strip that comes back to there. Then come the faces on the left of
///          the strips, those on the right and other ones; their edges in the order of the faces
///          before. A strip makes the edge at its start, along it, at its end; its faces, from left
///          to right, begin at its right end. Faces in corners where three or more strips meet come
///          last.
/// Places   Offsets are at a right angle to the edges, in the faces. The most possible is that at
///          which the first edge of a face shrinks to a point; of it a ten-thousandth is left. The
///          round is the arc that touches both faces.
/// Failure  null mesh beyond kMaxBevelFaces, at vertices that are no single fan, and where two
///          beveled edges meet on a border.
Beveled bevelEdges(const MeshData& mesh, std::span<const std::uint32_t> edges,
                   const Beveling& beveling);

} // namespace host::geometry
