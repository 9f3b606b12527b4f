// Faces joined by their mirror images.
#pragma once

#include "host/geometry/mesh/MeshData.h"
#include "host/math/Matrix4.h"

#include <span>

namespace host::geometry {

struct Mirroring {
    Matrix4 toSpace;                   ///< from the object to the space of plane and distances
    Vec3d point;                       ///< of the plane
    Vec3d normal{1, 0, 0};             ///< of length 1
    bool mergesBorder = true;          ///< vertices of borders become one with their images
    double threshold = 0;              ///< at most this far from them
    bool isThresholdAutomatic = false; ///< the mean length of the border's edges instead
    double smoothingAngle = 0;         ///< radians; edges that were merged are smooth up to it
};

/// The mesh and the mirror images of some of its faces (ascending numbers).
///
/// Numbers  the images of vertices, edges, faces and texture coordinates follow behind all others,
///          in the order of what they show; faces run the other way round from the same first
///          corner. Merged vertices and edges keep the number of the first ones, those of the
///          images go.
/// Places   merged vertices stand half way between the two, in the plane.
/// Failure  null where the space has no way back or limits are met.
std::shared_ptr<const MeshData>
mirrorFaces(const MeshData& mesh, std::span<const std::uint32_t> faces, const Mirroring& mirroring);

} // namespace host::geometry
