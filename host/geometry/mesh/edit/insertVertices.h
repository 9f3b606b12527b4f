// Vertices put on edges.
#pragma once

#include "host/geometry/mesh/edit/MeshRewriter.h"

namespace host::geometry {

/// A vertex on an edge, at a fraction (0..1) of the way from its start to its end.
struct EdgePoint {
    std::uint32_t edge = 0;
    double fraction = 0.5;
};

/// The mesh with a vertex on each of some edges, in all faces that have the edge.
///
/// Input    points: one for an edge, ascending edges.
/// Numbers  new vertices come behind all others, in the order of the edges; the half of an edge at
///          its start keeps its number, the other halves come behind all edges in the same order.
/// Uvs      likewise between those of the ends; corners that share the uvs of both ends share the
///          new one.
/// Failure  null as `MeshRewriter::finish` has it.
std::shared_ptr<const MeshData> insertVertices(const MeshData& mesh,
                                               std::span<const EdgePoint> points);

} // namespace host::geometry
