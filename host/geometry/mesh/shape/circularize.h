// Loops of vertices drawn to circles.
#pragma once

#include "host/geometry/mesh/MeshData.h"
#include "host/math/Matrix4.h"

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace host::geometry {

struct Circularity {
    Matrix4 toSpace;         ///< from the object to the space in which the circles are
    bool isEven = true;      ///< at equal angles; else each in its own direction
    double radialOffset = 0; ///< added to the radius
    double normalOffset = 0; ///< along the normal of the circle
    double twist = 0;        ///< radians, counter-clockwise about the normal
};

/// Vertices one after the other, counter-clockwise seen from outside, the lowest number first.
using VertexLoop = std::vector<std::uint32_t>;

/// The loops round faces (ascending) that hang together.
std::vector<VertexLoop> loopsAroundFaces(const MeshTopology& topology,
                                         std::span<const std::uint32_t> faces);

struct EdgeLoops {
    std::vector<VertexLoop> loops;
    bool isWhole = true; ///< false where some of the edges make no closed loop
};

/// The closed loops that edges (ascending) make, no more than two at a vertex.
EdgeLoops loopsOfEdges(const MeshData& mesh, std::span<const std::uint32_t> edges);

/// The mesh with the vertices of each loop on a circle: about the mean of their places, in the
/// plane across the loop's area vector, its radius the mean of their distances from the middle. The
/// first vertex of a loop stays in its direction, the others follow at equal angles.
std::shared_ptr<const MeshData> circularize(const MeshData& mesh, std::span<const VertexLoop> loops,
                                            const Circularity& circularity);

} // namespace host::geometry
