// Which diagonal of a quad is the better one: for many quads at once.
#pragma once

#include "host/geometry/mesh/FaceBatch.h"
#include "host/geometry/mesh/triangulate.h"

#include <cmath>
#include <cstddef>
#include <cstdint>

namespace host::geometry {

inline constexpr double kAngleTie = 1e-4; ///< radians, and as good as its own sine

struct AngleRatio {
    double sine = 0;
    double cosine = 0;
};

// Always in line: a call would keep the loop over a batch from working on several quads at once.

/// The smallest angle of a triangle, which faces its shortest side, by its sides in turn; `turn` is
/// the length of the cross product of the first two.
[[gnu::always_inline]] inline AngleRatio smallestAngle(const Vec3d& ab, const Vec3d& bc,
                                                       const Vec3d& ca, double turn)
{
    const double first = dot(ab, ab);
    const double second = dot(bc, bc);
    const double third = dot(ca, ca);
    const double later = second <= third ? dot(ca, ab) : dot(ab, bc);
    // "&", since a branch would keep several faces from being worked on at once
    const bool isFirst = (first <= second) & (first <= third);
    return {turn, -(isFirst ? dot(bc, ca) : later)};
}

/// Of two angles up to a right one, the smaller.
[[gnu::always_inline]] inline AngleRatio smaller(const AngleRatio& a, const AngleRatio& b)
{
    const bool isFirst = a.sine * b.cosine <= b.sine * a.cosine;
    return {isFirst ? a.sine : b.sine, isFirst ? a.cosine : b.cosine};
}

/// A quad by its sides, and how it turns at its corners: cross products of the sides there.
struct QuadSides {
    Vec3d ab, bc, cd, da;
    Vec3d atA, atB, atC, atD;

    [[gnu::always_inline]] QuadSides(const Vec3d& a, const Vec3d& b, const Vec3d& c, const Vec3d& d)
        : ab(b - a)
        , bc(c - b)
        , cd(d - c)
        , da(a - d)
        , atA(cross(da, ab))
        , atB(cross(ab, bc))
        , atC(cross(bc, cd))
        , atD(cross(cd, da))
    {
    }

    /// How far it turns left where it does least, seen against a normal; below zero at a reflex
    /// corner.
    [[gnu::always_inline]] double leastTurn(const Vec3d& normal) const
    {
        const double a = dot(atA, normal);
        const double b = dot(atB, normal);
        const double c = dot(atC, normal);
        const double d = dot(atD, normal);
        const double ofAB = a < b ? a : b;
        const double ofCD = c < d ? c : d;
        return ofAB < ofCD ? ofAB : ofCD;
    }
};

/// Whether the diagonal of corner 0 leaves the larger smallest angle in a convex quad. `turnB` and
/// `turnC` are the lengths of `sides.atB` and `sides.atC`.
[[gnu::always_inline]] inline bool isFirstBetter(const QuadSides& sides, const Vec3d& ac,
                                                 const Vec3d& bd, double turnB, double turnC)
{
    const auto& [ab, bc, cd, da, atA, atB, atC, atD] = sides;
    const AngleRatio zero = smaller(smallestAngle(ab, bc, ac * -1, turnB),
                                    smallestAngle(ac, cd, da, length(cross(ac, cd))));
    const AngleRatio one = smaller(smallestAngle(ab, bd, da, length(cross(ab, bd))),
                                   smallestAngle(bc, cd, bd * -1, turnC));
    // The sine of how much larger the angle of the first diagonal is; both are up to 60 degrees.
    const double gain = zero.sine * one.cosine - one.sine * zero.cosine;
    const double scale = std::sqrt((zero.sine * zero.sine + zero.cosine * zero.cosine) *
                                   (one.sine * one.sine + one.cosine * one.cosine));
    return gain > kAngleTie * scale;
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

/// What else faces are asked for along with their diagonals.
struct QuadShapes {
    BatchVectors normals;   ///< these and the areas as `FaceBatch::findPlanes` has them
    BatchNumbers areas;     ///<
    BatchNumbers angles[4]; ///< as `interiorAngle` has them
    Diagonals diagonals;
    // On the way to the angles, which are sines by then:
    BatchNumbers cosines[4]; ///< as long as those
    BatchNumbers turns[4];   ///< below zero: the corner is reflex
};

/// Diagonals of quads; the lengths of the turns are the sines of the angles at the corners by those
/// of the sides, so that a caller who wants angles as well gets them nearly for nothing.
[[gnu::always_inline]] inline void findDiagonalsOf(const FaceBatch<4>& __restrict quads,
                                                   Diagonals& __restrict found)
{
    for (std::size_t i = 0; i < quads.size(); ++i) {
        const Vec3d a = quads.point(0, i);
        const Vec3d b = quads.point(1, i);
        const Vec3d c = quads.point(2, i);
        const Vec3d d = quads.point(3, i);
        const QuadSides sides(a, b, c, d);
        found.leastTurn[i] = sides.leastTurn(quads.areaVectorOf(i));
        found.isSecond[i] =
            isFirstBetter(sides, c - a, d - b, length(sides.atB), length(sides.atC)) ? 0.0 : 1.0;
    }
}

/// `interiorAngle` at the corners of a batch, by how they turn.
template<bool kMayFold>
[[gnu::always_inline]] inline void findAnglesOf(std::size_t quads, QuadShapes& __restrict found)
{
    for (std::size_t k = 0; k < 4; ++k) {
        double* const angles = found.angles[k].values;
        const double* const cosines = found.cosines[k].values;
        const double* const turns = found.turns[k].values;
        for (std::size_t i = 0; i < quads; ++i) {
            const double angle = angleOf<kMayFold>(angles[i], cosines[i]);
            angles[i] = turns[i] < 0 ? 2 * std::numbers::pi - angle : angle;
        }
    }
}

/// All of it at once.
[[gnu::always_inline]] inline void findShapesOf(const FaceBatch<4>& __restrict quads,
                                                QuadShapes& __restrict found)
{
    std::int64_t foldedCount = 0; // angles that cost a division more; of meshes like grids none
    for (std::size_t i = 0; i < quads.size(); ++i) {
        const Vec3d a = quads.point(0, i);
        const Vec3d b = quads.point(1, i);
        const Vec3d c = quads.point(2, i);
        const Vec3d d = quads.point(3, i);
        const QuadSides sides(a, b, c, d);
        const Vec3d vector = quads.areaVectorOf(i);
        const double area = length(vector);
        const Vec3d normal = vector * (1 / area);
        found.normals.x[i] = normal.x;
        found.normals.y[i] = normal.y;
        found.normals.z[i] = normal.z;
        found.areas.values[i] = area;
        const double turnB = length(sides.atB);
        const double turnC = length(sides.atC);
        const double sines[4] = {length(sides.atA), turnB, turnC, length(sides.atD)};
        const double cosines[4] = {-dot(sides.ab, sides.da), -dot(sides.bc, sides.ab),
                                   -dot(sides.cd, sides.bc), -dot(sides.da, sides.cd)};
        const double turns[4] = {dot(sides.atA, normal), dot(sides.atB, normal),
                                 dot(sides.atC, normal), dot(sides.atD, normal)};
        for (std::size_t k = 0; k < 4; ++k) {
            found.angles[k].values[i] = sines[k];
            found.cosines[k].values[i] = cosines[k];
            found.turns[k].values[i] = turns[k];
            foldedCount += isNearAnAxis(sines[k], cosines[k]) ? 0 : 1;
        }
        found.diagonals.leastTurn[i] = sides.leastTurn(vector);
        found.diagonals.isSecond[i] = isFirstBetter(sides, c - a, d - b, turnB, turnC) ? 0.0 : 1.0;
    }
    if (foldedCount == 0) {
        findAnglesOf<false>(quads.size(), found);
    } else {
        findAnglesOf<true>(quads.size(), found);
    }
}

} // namespace host::geometry
