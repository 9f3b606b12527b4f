// Points, derivatives and normals of a surface.
#pragma once

#include "host/geometry/curve/HomogeneousPoint.h"
#include "host/geometry/curve/KnotVector.h"
#include "host/geometry/nurbs/SurfaceData.h"

#include <span>

namespace host::geometry {

/// A point, its derivatives by u and v, and du x dv at unit length.
struct SurfacePoint {
    Vec3d position, du, dv, normal;
};

/// Evaluates one surface, of which it holds a copy; its trim regions play no part. Parameters
/// outside the domain are clamped, those of a periodic direction wrapped. Where an edge of the
/// surface runs into one point the normal is the limit across that edge; it is zero only where no
/// neighbouring point has one either.
class SurfaceEvaluator {
public:
    explicit SurfaceEvaluator(const SurfaceData& surface);

    /// False for a record whose counts do not fit each other, whose knots decrease or whose numbers
    /// are not finite. Nothing but this may be asked of an invalid one.
    bool isValid() const { return m_isValid; }
    double startU() const { return m_u.start(); }
    double endU() const { return m_u.end(); }
    double startV() const { return m_v.start(); }
    double endV() const { return m_v.end(); }
    const KnotVector& knotsU() const { return m_u; }
    const KnotVector& knotsV() const { return m_v; }

    Vec3d point(double u, double v) const;
    SurfacePoint evaluate(double u, double v) const;

    /// All pairs of the parameters, v running fastest: us.size() * vs.size() entries. The basis is
    /// made once per row and column.
    void evaluateGrid(std::span<const double> us, std::span<const double> vs,
                      std::span<SurfacePoint> points) const;
    /// Positions alone.
    void pointGrid(std::span<const double> us, std::span<const double> vs,
                   std::span<Vec3d> points) const;

private:
    struct Derivatives;
    Derivatives derivatives(const SplineBasis& u, const SplineBasis& v) const;
    Vec3d normalAt(double u, double v, const Derivatives& known) const;
    Vec3d normalBeside(double u, double v) const;
    bool findNormal(const Derivatives& known, Vec3d& normal) const;
    void project(Derivatives& sums) const;

    KnotVector m_u, m_v;
    std::vector<HomogeneousPoint> m_points;
    double m_extent = 0; ///< longest side of the box around the control points
    bool m_isRational = false;
    bool m_isValid = false;
};

/// True for a record that can be evaluated.
bool isValidSurface(const SurfaceData& surface);

/// The control points of a surface times their weights (1 when it is not rational); empty where the
/// counts do not fit or a number is not finite.
std::vector<HomogeneousPoint> homogeneousPoints(const SurfaceData& surface);

} // namespace host::geometry
