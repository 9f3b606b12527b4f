// Which diagonal of a quad is the better one: for many quads at once.
#pragma once

#include "host/geometry/mesh/FaceBatch.h"
#include "host/geometry/mesh/triangulate.h"

#include <cmath>
#include <cstddef>

namespace host::geometry {

inline constexpr double kAngleTie = 1e-4; ///< radians, and as good as its own sine

struct AngleRatio {
    double sine = 0;
    double cosine = 0;
};

// Always in line: a call would keep the loop over a batch from working on several quads at once.

/// The smallest angle of a triangle: the one that faces its shortest side.
[[gnu::always_inline]] inline AngleRatio smallestAngle(const Vec3d& a, const Vec3d& b,
                                                       const Vec3d& c)
{
    const Vec3d ab = b - a;
    const Vec3d bc = c - b;
    const Vec3d ca = a - c;
    const double first = dot(ab, ab);
    const double second = dot(bc, bc);
    const double third = dot(ca, ca);
    const double later = second <= third ? dot(ca, ab) : dot(ab, bc);
    // "&", since a branch would keep several faces from being worked on at once
    const bool isFirst = (first <= second) & (first <= third);
    return {length(cross(ab, bc)), -(isFirst ? dot(bc, ca) : later)};
}

/// Of two angles up to a right one, the smaller.
[[gnu::always_inline]] inline AngleRatio smaller(const AngleRatio& a, const AngleRatio& b)
{
    const bool isFirst = a.sine * b.cosine <= b.sine * a.cosine;
    return {isFirst ? a.sine : b.sine, isFirst ? a.cosine : b.cosine};
}

/// Whether the diagonal of corner 0 leaves the larger smallest angle in a convex quad.
[[gnu::always_inline]] inline bool isFirstBetter(const Vec3d& a, const Vec3d& b, const Vec3d& c,
                                                 const Vec3d& d)
{
    const AngleRatio zero = smaller(smallestAngle(a, b, c), smallestAngle(a, c, d));
    const AngleRatio one = smaller(smallestAngle(a, b, d), smallestAngle(b, c, d));
    // The sine of how much larger the angle of the first diagonal is; both are up to 60 degrees.
    const double gain = zero.sine * one.cosine - one.sine * zero.cosine;
    const double scale = std::sqrt((zero.sine * zero.sine + zero.cosine * zero.cosine) *
                                   (one.sine * one.sine + one.cosine * one.cosine));
    return gain > kAngleTie * scale;
}

/// How far a loop turns left at a corner, seen against a normal; below zero at a reflex corner.
[[gnu::always_inline]] inline double turnAt(const Vec3d& previous, const Vec3d& corner,
                                            const Vec3d& next, const Vec3d& normal)
{
    return dot(cross(corner - previous, next - corner), normal);
}

/// What is known of the quads of a batch without looking at them one by one.
struct Diagonals {
    double isSecond[kBatchFaces];  ///< 1 where the diagonal of corner 1 is better, for convex quads
    double leastTurn[kBatchFaces]; ///< below zero: perhaps concave

    /// Whether the better diagonal of a quad starts at its second corner, as `bestDiagonal` has it.
    bool isSecondBetter(const FaceBatch<4>& quads, std::size_t i) const
    {
        if (leastTurn[i] >= 0) {
            return isSecond[i] != 0;
        }
        return bestDiagonal({quads.point(0, i), quads.point(1, i), quads.point(2, i),
                             quads.point(3, i)}) == 1;
    }
};

[[gnu::always_inline]] inline void findDiagonalsOf(const FaceBatch<4>& __restrict quads,
                                                   Diagonals& __restrict found)
{
    for (std::size_t i = 0; i < quads.size(); ++i) {
        const Vec3d a = quads.point(0, i);
        const Vec3d b = quads.point(1, i);
        const Vec3d c = quads.point(2, i);
        const Vec3d d = quads.point(3, i);
        const Vec3d normal = quads.areaVectorOf(i);
        const double atA = turnAt(d, a, b, normal);
        const double atB = turnAt(a, b, c, normal);
        const double atC = turnAt(b, c, d, normal);
        const double atD = turnAt(c, d, a, normal);
        const double atAB = atA < atB ? atA : atB;
        const double atCD = atC < atD ? atC : atD;
        found.leastTurn[i] = atAB < atCD ? atAB : atCD;
        found.isSecond[i] = isFirstBetter(a, b, c, d) ? 0.0 : 1.0;
    }
}

} // namespace host::geometry
