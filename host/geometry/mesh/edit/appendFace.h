// A face added to a mesh, between its edges or vertices and new ones.
#pragma once

#include "host/geometry/mesh/edit/MeshRewriter.h"

namespace host::geometry {

/// A step on the way round a new face.
struct FaceStep {
    enum class Kind : std::uint8_t {
        Vertex,  ///< to a vertex of the mesh
        Edge,    ///< along a border edge of the mesh, against the direction of its face
        NewPoint ///< to a new vertex
    } kind = Kind::Vertex;
    std::uint32_t number = 0; ///< of the vertex or edge
    Vec3f point;              ///< of a new vertex
};

/// How the new face is textured; the numbers are those of the attribute texture.
enum class FaceTexture : std::uint8_t {
    None = 0,
    Normalized = 1, ///< as it lies in its plane, scaled alike to fit the unit square
    Unitized = 2    ///< four corners at those of the unit square, other numbers round its circle
};

/// The mesh with a face.
///
/// Numbers  new vertices and new edges, smooth ones, come behind all others in the order of the
/// way;
///          the face comes last. Between vertices an edge of the
///          mesh is taken where there is one, preferably a border that is walked the other way;
///          between edges that do not meet there is always a new one.
/// Groups   those of the face beside its first edge that has one, else those of the last face.
/// Uvs      new ones of the current set, one for each corner.
/// Failure  null for less than three corners, for steps that do not exist, and as
///          `MeshRewriter::finish` has it.
std::shared_ptr<const MeshData> appendFace(const MeshData& mesh, std::span<const FaceStep> steps,
                                           FaceTexture texture);

} // namespace host::geometry
