// Two solids cut at each other, exactly: the only door to the library that does it.
#pragma once

#include "host/geometry/mesh/boolean/Solid.h"

#include <cstddef>
#include <optional>

namespace host::geometry {

/// So many pairs of triangles whose boxes meet may be cut for one boolean.
inline constexpr std::size_t kMostMeetingTriangles = std::size_t{1} << 15;

/// Whether this program was built with the library (see ORV_BOOLEANS in cmake/booleans.cmake).
bool canCutSolids();

/// What the operation leaves of two solids.
///
/// Method   the triangles are cut where they cross, with exact numbers, and those parts are kept
///          that the operation wants (Polygon_mesh_processing of CGAL). Only points are rounded in
///          the end, to the grid and by their exact value: the same on every machine.
/// Points   in no particular order; so are triangles, which keep the sources of those that they are
///          parts of. Of a difference the second solid's parts are reversed.
/// Failure  none where a solid does not close, has triangles without area, crosses or touches
///          itself; where parts of the result would touch in an edge or a point; where more pairs
///          of triangles meet than are left of `meetings`, from which they are taken, or very many
///          of one solid lie across each other; where `canCutSolids` is false.
std::optional<Solid> cutSolids(const Solid& first, const Solid& second, BooleanOperation operation,
                               std::size_t& meetings);

} // namespace host::geometry
