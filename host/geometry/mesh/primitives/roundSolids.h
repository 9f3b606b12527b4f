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
    bool hasHardSides = false;     ///< the edges along the sides: a prism
    bool hasUvs = true;
    bool hasFormerUvs = false; ///< as made before the layout became even
};

/// Adds a cylinder to a builder; see `makeCylinder`.
void addCylinder(SolidBuilder& builder, const CylinderSettings& settings);

/// Rings: the lower cap from the middle outwards, the sides, the upper cap inwards; then the points
/// in the middle of the caps (see `addLathe`). The rims are hard.
std::shared_ptr<const MeshData> makeCylinder(const CylinderSettings& settings,
                                             const SolidPlacement& placement);

/// A cone, a pyramid.
struct ConeSettings {
    double radius = 1;
    double height = 2;
    std::uint32_t axisCells = 20;  ///< at least 3
    std::uint32_t heightCells = 1; ///< at least 1
    std::uint32_t capCells = 0;    ///< from the middle of the base to its rim; 0: one face
    bool hasRoundCap = false;      ///< the base is a half sphere below the height
    bool hasHardSides = false;     ///< the edges to the tip: a pyramid
    bool hasUvs = true;
};

/// Rings: the base from the middle outwards, the sides up to below the tip; then the point in the
/// middle of the base, if any, and the tip (see `addLathe`). The rim is hard.
std::shared_ptr<const MeshData> makeCone(const ConeSettings& settings,
                                         const SolidPlacement& placement);

struct TorusSettings {
    double radius = 1; ///< of the circle in the middle of the tube
    double sectionRadius = 0.5;
    double twist = 0;             ///< turns the sections, radians
    std::uint32_t axisCells = 20; ///< around the axis, at least 3
    std::uint32_t tubeCells = 20; ///< around the tube, at least 3
    bool hasUvs = true;
};

/// Rings of points from the inner side over the upper one (see `addClosedRings`), each as in
/// `LatheRing`. All edges are smooth.
std::shared_ptr<const MeshData> makeTorus(const TorusSettings& settings,
                                          const SolidPlacement& placement);

struct PipeSettings {
    double radius = 1; ///< of the outer side
    double height = 2; ///< as Maya has it: the pipe is half as high
    double thickness = 0.5;
    std::uint32_t axisCells = 20;  ///< at least 3
    std::uint32_t heightCells = 1; ///< at least 1
    std::uint32_t capCells = 1;    ///< across each end, at least 1
    bool hasRoundCaps = false;     ///< ends are half circles beyond the height
    bool hasUvs = true;
};

/// Rings of points from below: the inner side, the upper end, the outer side, the lower end (see
/// `addClosedRings`). Point k of a ring is at -k / axisCells of a turn from +x towards +z. The four
/// rims are hard.
std::shared_ptr<const MeshData> makePipe(const PipeSettings& settings,
                                         const SolidPlacement& placement);

/// A wire wound about the axis.
struct HelixSettings {
    double coils = 3;
    double height = 2; ///< between the middles of the ends
    double width = 2;  ///< across the middle of the wire
    double radius = 0.4;
    bool isClockwise = false;      ///< going up, seen from above
    std::uint32_t axisCells = 8;   ///< around the wire, at least 3
    std::uint32_t coilCells = 150; ///< along the wire, at least 1
    std::uint32_t capCells = 0;
    bool hasRoundCaps = false;
    bool hasUvs = true;
    bool hasFormerUvs = false;
};

/// A cylinder's parts in a cylinder's order, its axis bent to a helix that begins at +x.
std::shared_ptr<const MeshData> makeHelix(const HelixSettings& settings,
                                          const SolidPlacement& placement);

} // namespace host::geometry
