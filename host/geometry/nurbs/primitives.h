// Planes, spheres, cylinders, cones, tori and discs: near ones without weights, point by point as
// Maya makes them, and exact rational ones.
#pragma once

#include "host/geometry/curve/SplineRows.h"
#include "host/geometry/curve/knotAlgebra.h"
#include "host/geometry/nurbs/SurfaceData.h"

#include <array>
#include <numbers>

namespace host::geometry {

/// What the round primitives have in common; lengths in centimetres, angles in radians.
struct RoundPrimitive {
    Vec3d pivot;
    Vec3d axis{0, 1, 0};
    double radius = 1;
    double heightRatio = 2;
    double startSweep = 0;
    double endSweep = 2 * std::numbers::pi;
    double minorSweep = 2 * std::numbers::pi; ///< of a torus
    std::int32_t sections = 8;
    std::int32_t spans = 1;
    std::int32_t degree = 3;
};

/// u runs along the profile from the axis's back to its front, v around it. The circles have
/// `sections` sections, the profile `spans`; both pass through the true shape at their knots.
SurfaceData sphereSurface(const RoundPrimitive& primitive);
/// Height radius * heightRatio; u is the height above the bottom.
SurfaceData cylinderSurface(const RoundPrimitive& primitive);
/// From the base to the tip; u is the length along the slant.
SurfaceData coneSurface(const RoundPrimitive& primitive);
/// Its tube has the radius radius * heightRatio; u begins at the back and goes outwards.
SurfaceData torusSurface(const RoundPrimitive& primitive);

/// The same shapes exactly, as rational quadratics; `sections`, `spans` and `degree` play no part.
SurfaceData exactSphere(const RoundPrimitive& primitive);
SurfaceData exactCylinder(const RoundPrimitive& primitive);
SurfaceData exactCone(const RoundPrimitive& primitive);
SurfaceData exactTorus(const RoundPrimitive& primitive);
/// A flat disc whose normal is the axis: u runs from the rim to the middle.
SurfaceData exactDisc(const RoundPrimitive& primitive);

struct PlanePrimitive {
    Vec3d pivot;
    Vec3d axis{0, 1, 0};
    double width = 1;
    double lengthRatio = 1;
    std::int32_t patchesU = 1;
    std::int32_t patchesV = 1;
    std::int32_t degree = 3;
};

/// A rectangle across the axis, both parameters 0..1: u along its width (+x for the axis +y), v
/// along its length, width * lengthRatio (-z).
SurfaceData planeSurface(const PlanePrimitive& primitive);

/// The six sides of a box of the plane's width and length and height width * heightRatio, each
/// with its normal outwards.
std::array<SurfaceData, 6> boxSurfaces(const PlanePrimitive& primitive, double heightRatio);

/// A straight line of `spans` spans over [start, end], evenly run through.
SplineRows lineRows(const Vec3d& from, const Vec3d& to, double start, double end,
                    std::int32_t spans, std::int32_t degree);

/// More patches, spans or sections than this in one direction are not made.
inline constexpr std::int32_t kMaxPatches = 1000;
static_assert((kMaxPatches + 3) * (kMaxPatches + 3) <= kMaxSplineCvs,
              "a cubic surface of that many in both directions is made");

} // namespace host::geometry
