// Space bent by a lattice of control points.
#pragma once

#include "host/geometry/deform/LatticeData.h"

#include <array>
#include <cstdint>
#include <span>

namespace host::geometry {

/// Which points outside the box -0.5..0.5 go along.
enum class LatticeOutside : std::uint8_t {
    Stays = 0,
    Moves = 1,   ///< as the nearest point of the box
    FallsOff = 2 ///< the same, less and less up to a distance
};

struct LatticeSettings {
    bool isLocal = false; ///< splines instead of one polynomial
    /// Degrees of the splines along s, t and u (where there are points enough).
    std::array<int, 3> influence{2, 2, 2};
    LatticeOutside outside = LatticeOutside::Stays;
    double falloffDistance = 1; ///< in lengths of the box
};

/// Points along one direction of a lattice: more than any has, few enough for a polynomial.
inline constexpr std::int32_t kMaxLatticeDivisions = 512;

/// Lattice points times moved points that are worked through; more take too long.
inline constexpr std::uint64_t kMaxLatticeWork = std::uint64_t{1} << 33;

/// A lattice of s * t * u points that nothing has moved yet.
LatticeData restLattice(std::int32_t s, std::int32_t t, std::int32_t u);

/// True where there are 2 to kMaxLatticeDivisions points along each direction, and all are there.
bool isValidLattice(const LatticeData& lattice);

/// How many lattice points take part in moving `pointCount` points, all together.
std::uint64_t latticeWork(const LatticeData& lattice, const LatticeSettings& settings,
                          std::size_t pointCount);

/// How much a point, given in the space of the undeformed lattice, goes along: 1 in its box, and
/// outside what the settings say.
double latticeReach(const LatticeSettings& settings, const Vec3d& point);

/// Moves points, given in the space of the undeformed lattice, by what moved the lattice's points
/// from their places at rest, weighted by Bernstein polynomials over the whole lattice (T.
/// Sederberg, S. Parry, "Free-Form Deformation of Solid Geometric Models", 1986) or by B-splines.
/// Points outside the box move as the nearest point of it. Precondition: a valid lattice.
void moveByLattice(const LatticeData& lattice, const LatticeSettings& settings,
                   std::span<Vec3d> points);

} // namespace host::geometry
