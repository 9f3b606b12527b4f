// Platonic solids and the soccer ball.
#pragma once

#include "host/geometry/mesh/primitives/SolidBuilder.h"

#include <cstdint>
#include <memory>

namespace host::geometry {

enum class RegularSolid : std::uint8_t {
    Tetrahedron,
    Cube,
    Octahedron,
    Dodecahedron,
    Icosahedron,
    SoccerBall ///< the truncated icosahedron
};

/// How the faces are divided.
enum class SolidDivision : std::uint8_t { Quads = 0, Triangles = 1, Pie = 2 };

struct RegularSolidSettings {
    RegularSolid solid = RegularSolid::Icosahedron;
    double radius = 1; ///< of the sphere through the corners
    SolidDivision division = SolidDivision::Quads;
    std::uint32_t subdivisions = 0;
    double inflation = 1; ///< how far the points of a division go to the sphere: 0 not, 1 wholly
    bool isSmooth = true; ///< the edges
    bool hasUvs = true;
};

std::uint64_t regularSolidFaceCount(const RegularSolidSettings& settings);

/// The icosahedron stands on a corner along z and numbers its points ring by ring from there, the
/// soccer ball on a corner along y, as in Maya; how the others stand is our own choice. Texture
/// coordinates are longitude about y from +z and latitude over the unit square; faces across the
/// seam have coordinates of their own beyond 1.
std::shared_ptr<const MeshData> makeRegularSolid(const RegularSolidSettings& settings,
                                                 const SolidPlacement& placement);

/// The length of an edge over the radius.
double edgeOverRadius(RegularSolid solid);

} // namespace host::geometry
