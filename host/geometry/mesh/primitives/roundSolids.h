// Spheres, cylinders, cones and what is made like them.
#pragma once

#include "host/geometry/mesh/primitives/SolidBuilder.h"

#include <cstdint>
#include <memory>

namespace host::geometry {

/// The texture coordinates of a sphere at its poles.
enum class SphereUvs : std::uint8_t {
    None,
    Pinched,  ///< one for all triangles
    Sawtooth, ///< one for each triangle, above its middle
};

struct SphereSettings {
    double radius = 1;
    std::uint32_t axisCells = 20;   ///< around the axis, at least 3
    std::uint32_t heightCells = 20; ///< from pole to pole, at least 2
    SphereUvs uvs = SphereUvs::Sawtooth;
};

/// Rings from below, then the lower and the upper pole (see `addLathe`). All edges are smooth.
std::shared_ptr<const MeshData> makeSphere(const SphereSettings& settings,
                                           const SolidPlacement& placement);

/// A cylinder, a prism.
struct CylinderSettings {
    double radius = 1;
    double height = 2;
    std::uint32_t axisCells = 20;  ///< at least 3
    std::uint32_t heightCells = 1; ///< at least 1
    std::uint32_t capCells = 0;    ///< from the middle of a cap to its rim; 0: one face
    bool hasRoundCaps = false;     ///< caps are half spheres beyond the height
    bool hasUvs = true;
    bool hasFormerUvs = false; ///< as made before the layout became even
};

/// Rings: the lower cap from the middle outwards, the sides, the upper cap inwards; then the points
/// in the middle of the caps (see `addLathe`). The rims are hard.
std::shared_ptr<const MeshData> makeCylinder(const CylinderSettings& settings,
                                             const SolidPlacement& placement);

} // namespace host::geometry
