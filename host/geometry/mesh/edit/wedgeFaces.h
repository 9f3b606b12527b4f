// Faces swung out about an axis, with an arc of walls behind them.
#pragma once

#include "host/geometry/mesh/MeshData.h"
#include "host/math/Matrix4.h"

#include <cstdint>
#include <memory>
#include <span>

namespace host::geometry {

struct FaceWedge {
    Matrix4 toSpace;                       ///< from the object to the space of the axis
    std::span<const std::uint32_t> hinges; ///< edges whose mean is the axis; none: `axis`
    Vec3d center;                          ///< a point of the axis
    Vec3d axis;                            ///< its direction
    double angle = 0;                      ///< radians; outwards about hinges
    std::uint32_t divisions = 1;           ///< of the arc; at least 1
    double smoothingAngle = 0; ///< radians; up to which the edges of the walls are smooth
};

/// The mesh with faces (ascending) swung about an axis.
///
/// Rule     as `extrudeFaces` with all faces together and each layer an equal part of the angle on;
///          but the ends of hinges that lie on the axis are not made anew: walls beside them are
///          fans of triangles, and along a hinge there is none.
/// Numbers  as `extrudeFaces`, without what falls together on the axis.
/// Failure  null without an axis, and as `extrudeFaces`.
std::shared_ptr<const MeshData>
wedgeFaces(const MeshData& mesh, std::span<const std::uint32_t> faces, const FaceWedge& wedge);

} // namespace host::geometry
