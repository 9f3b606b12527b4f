// Solids of rings about an axis: spheres, cylinders, cones, pyramids, prisms.
#pragma once

#include "host/geometry/mesh/primitives/SolidBuilder.h"

#include <cstdint>
#include <vector>

namespace host::geometry {

/// One ring of points. Point k stands at the angle -(k + 1) / sides of a turn from +x towards +z,
/// so the last one is on +x.
struct LatheRing {
    double radius = 1;
    double y = 0;
    bool isSmooth = true;      ///< the edges of the ring
    bool isSmoothAbove = true; ///< the edges from it to the next ring
    std::uint32_t uvBelow = 0; ///< the row of texture coordinates of the faces below
    std::uint32_t uvAbove = 0; ///< ... and above
};

/// A row of texture coordinates: one for each point of a ring; or one more, the last being the
/// first point again at the end of the turn; or a single one for all.
struct LatheUvRow {
    std::vector<Vec2f> points;
    bool isMirrored = false; ///< point k takes the coordinate of the angle of opposite sign
};

/// How the rings are closed below the first one, or above the last.
enum class LatheEnd : std::uint8_t {
    Open,
    Face, ///< one face
    Fan   ///< a point on the axis and triangles
};

struct Lathe {
    std::uint32_t sides = 3;
    std::vector<LatheRing> rings; ///< from below; at least one
    LatheEnd bottom = LatheEnd::Fan;
    LatheEnd top = LatheEnd::Fan;
    double bottomY = 0; ///< of the points of fans
    double topY = 0;
    bool isBottomSmooth = true; ///< the inner edges of a fan
    bool isTopSmooth = true;
    std::vector<LatheUvRow> uvRows; ///< none: no texture coordinates
    std::uint32_t bottomUv = 0;     ///< the row of the point of a fan
    std::uint32_t topUv = 0;
};

/// Points: ring by ring from below, then the points of the fans. Edges: around the rings, then from
/// ring to ring, then from the lower fan's point to the first ring, then from the last ring to the
/// upper fan's point. Faces: between the rings from below, then the lower end, then the upper one.
/// Texture coordinates: row by row as listed.
void addLathe(SolidBuilder& builder, const Lathe& lathe);

/// Points of a regular polygon of radius 1 in the order of `LatheRing`. Single precision, each from
/// its neighbour by one turn, as Maya computes them: every digit is reproduced.
std::vector<Vec2f> unitRing(std::uint32_t sides);

} // namespace host::geometry
