// The points of one step of Catmull-Clark subdivision.
#pragma once

#include "host/geometry/mesh/shape/SubdivisionLevel.h"
#include "host/math/Vec.h"

#include <cstdint>
#include <span>
#include <vector>

namespace host::geometry {

/// The points of a level's vertices, then one in each of its faces, then one on each of its edges.
struct SubdividedPoints {
    std::vector<Vec3d> points;
    std::size_t firstOfFaces = 0;
    std::size_t firstOfEdges = 0;

    const Vec3d& ofFace(std::uint32_t face) const { return points[firstOfFaces + face]; }
    const Vec3d& ofEdge(std::uint32_t edge) const { return points[firstOfEdges + edge]; }
};

/// Rules  E. Catmull, J. Clark: "Recursively generated B-spline surfaces on arbitrary topological
///        meshes" (1978): the mean of a face; of an edge's ends and the points of its two faces; of
///        a vertex with n faces (n - 2)/n of itself, and 1/n^2 of the points of each neighbour and
///        each face. Creases as in T. DeRose, M. Kass, T. Truong: "Subdivision surfaces in
///        character animation" (1998): on a sharp edge the middle; at a vertex of two sharp edges
///        3/4 of itself and 1/8 of each of their ends; a vertex of more, or a sharp one, stays;
///        sharpness below one blends. Edges with one face, or with more than two, are sharp.
/// Input  isSmoothed: the faces that take part, all where it is empty; points elsewhere stay.
SubdividedPoints catmullClark(const SubdivisionLevel& level, std::span<const Vec3d> points,
                              std::span<const std::uint8_t> isSmoothed,
                              const SmoothingRules& rules);

/// Texture coordinates of one step. Sides: an edge has one for each pair of ids that its faces have
/// at its ends.
struct SubdividedUvs {
    std::vector<Vec2f> points;         ///< the moved ones
    std::vector<std::uint32_t> side;   ///< per corner the first corner of its edge's side
    std::vector<std::uint32_t> firsts; ///< those that have two ids, edge after edge
    std::vector<Vec2f> sides;          ///< by corner, in the middle; valid for those
    std::vector<Vec2f> faces;          ///< valid for faces with ids at all corners
};

/// `ids`: one per corner, -1 for none.
SubdividedUvs subdividedUvs(const SubdivisionLevel& level, std::span<const Vec2f> points,
                            std::span<const std::int32_t> ids,
                            std::span<const std::uint8_t> isSmoothed, UvRule rule);

/// True when all corners of a face have texture coordinates.
bool hasAllUvs(const SubdivisionLevel& level, std::uint32_t face,
               std::span<const std::int32_t> ids);

} // namespace host::geometry
