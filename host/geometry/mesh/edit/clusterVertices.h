// Vertices near each other, and other sets of vertices, found to be joined.
#pragma once

#include "host/geometry/mesh/edit/DisjointSets.h"
#include "host/geometry/mesh/edit/joinVertices.h"
#include "host/math/Matrix4.h"

namespace host::geometry {

/// The points of a mesh in the space that a matrix leads to.
std::vector<Vec3d> placesIn(const MeshData& mesh, const Matrix4& matrix);

/// Joins vertices that lie within a distance of each other, the distance included.
///
/// Input    vertices: which may be joined, ascending; places: of all vertices, where distances are
///          measured (the points, or those in another space).
/// Rule     in ascending order each vertex that is not taken yet takes all of the others within the
///          distance. They become the lowest of them and stand at the mean of their points. So
///          a chain of near vertices does not fall into one.
/// Limits   a distance that is no number or negative joins nothing; vertices without a place that
///          is a number are left alone. Near-linear whatever the distance.
VertexJoin joinWithin(const MeshData& mesh, std::span<const std::uint32_t> vertices,
                      std::span<const Vec3d> places, double distance);

/// Joins some vertices into the lowest of them, at a given point.
VertexJoin joinAll(const MeshData& mesh, std::span<const std::uint32_t> vertices,
                   const Vec3d& point);

/// The mean of some points of a mesh; the origin for none.
Vec3d meanPoint(const MeshData& mesh, std::span<const std::uint32_t> vertices);

/// Joins the vertices of each set into its lowest, at the mean of their points. Sets of one vertex
/// stay as they are.
VertexJoin joinSets(const MeshData& mesh, DisjointSets& sets);

} // namespace host::geometry
