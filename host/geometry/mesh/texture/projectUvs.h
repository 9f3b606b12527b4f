// Texture coordinates by projection of the vertices.
#pragma once

#include "host/geometry/mesh/MeshData.h"
#include "host/math/Matrix4.h"

#include <memory>
#include <span>
#include <string_view>

namespace host::geometry {

enum class UvProjectionKind { Planar, Cylindrical, Spherical };

/// How a place in the object becomes one on the image. Where the placing is all zero the projector
/// looks along -z with y upwards: a plane of width and height about the centre becomes the unit
/// square. Cylinder and sphere stand about the y axis; the middle of the image is at +z, and u
/// grows towards +x.
struct UvProjection {
    UvProjectionKind kind = UvProjectionKind::Planar;
    Matrix4 toSpace; ///< from the object to the space in which the projector is placed
    Vec3d center;
    Vec3d rotate; ///< radians, about x, then y, then z
    /// Of the part that becomes the unit square: lengths, or angles in radians for u of cylinder
    /// and sphere and v of the sphere. 0 counts as 1.
    double width = 1;
    double height = 1;
    Vec2f imageCenter{0.5F, 0.5F}; ///< where the centre comes to
    double imageScaleU = 1;
    double imageScaleV = 1;
    double imageAngle = 0; ///< radians, counter-clockwise about the image's centre
};

/// The mesh with the corners of the faces (ascending) projected into a set: one texture coordinate
/// per vertex, not shared with other faces. On cylinder and sphere a face that reaches over the
/// back (-z) is continued beyond u's end, so that vertices there may have two.
///
/// Numbers  Vertices get ids in the order in which the loops of the faces first come to them: at
///          first the ids that the faces alone had, ascending, then new ones behind all others.
///          Ids that nothing uses then close up.
/// Set      the one of the name (see `findUvSet`); where there is none it is made.
std::shared_ptr<const MeshData> projectUvs(const MeshData& mesh, std::string_view setName,
                                           std::span<const std::uint32_t> faces,
                                           const UvProjection& projection);

} // namespace host::geometry
