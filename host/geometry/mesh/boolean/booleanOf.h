// Union, difference and intersection of meshes that are solids.
#pragma once

#include "host/geometry/mesh/boolean/Solid.h"
#include "host/geometry/mesh/edit/uniteMeshes.h"

#include <cstddef>
#include <memory>
#include <span>

namespace host::geometry {

/// Beyond so many triangles of all operands, and so many of all steps from operand to operand,
/// nothing is computed.
inline constexpr std::size_t kMostBooleanTriangles = std::size_t{1} << 18;
inline constexpr std::size_t kMostBooleanSteps = std::size_t{1} << 20;

/// The first part with the second, the result with the third, and so on: all of them united, all
/// but the first taken from the first, or what is in all of them.
///
/// Faces    those of the first part in their order, then of the second, and so on. A face that is
///          not cut keeps its corners and texture coordinates, also where vertices come between
///          them; of one that is cut the pieces stand in its place, with holes where it is cut out
///          within. Of a difference all faces but the first part's are reversed.
/// Vertices those of the parts that are left, in their order, then new ones in the order of the
///          faces on which they lie. Edges alike.
/// Cut      edges are hard; texture coordinates on them are those of the place in the face that was
///          cut. Pieces of an edge are hard or soft as it was. Groups of faces go along.
/// Matrix   points of parts are rounded to float in the common space before they are cut. A part
///          that is inside out, as by a mirroring matrix, counts for the solid within, and its
///          faces are turned.
/// Failure  null where a part that has to be cut is no closed solid or crosses itself, where the
///          result would touch itself in an edge or a point, beyond the limits (also
///          kMostMeetingTriangles), and without the library that cuts (`canCutSolids`). Parts whose
///          boxes are apart are not cut and may be of any kind.
std::shared_ptr<const MeshData> booleanOf(std::span<const UnitedMesh> parts,
                                          BooleanOperation operation, UvSetMerging merging);

} // namespace host::geometry
