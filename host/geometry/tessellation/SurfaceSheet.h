// A surface whose seams and poles are exact.
#pragma once

#include "host/geometry/nurbs/SurfaceEvaluator.h"

#include <span>

namespace host::geometry {

/// Evaluates a surface so that the two sides of a seam, and all points of an edge that runs into
/// one point, have the same positions to the last digit. Normals are those of the surface.
class SurfaceSheet {
public:
    explicit SurfaceSheet(const SurfaceData& surface);

    bool isValid() const { return m_isValid; }
    const SurfaceEvaluator& evaluator() const { return m_evaluator; }
    double size() const { return m_size; } ///< diagonal of the box round the surface
    /// Mean lengths of the lines along u and along v.
    double lengthU() const { return m_lengthU; }
    double lengthV() const { return m_lengthV; }

    SurfacePoint at(double u, double v) const;
    /// The points (us[i], vs[k]), v running fastest; and their positions alone.
    void block(std::span<const double> us, std::span<const double> vs,
               std::span<SurfacePoint> points) const;
    void positions(std::span<const double> us, std::span<const double> vs,
                   std::span<Vec3d> points) const;

    /// Points that opposite edges, or all points of an edge, may be apart and still count as one;
    /// in diagonals of the box.
    static constexpr double kSamePlace = 1e-7;

private:
    void measure();
    void findSeams(std::span<const double> us, std::span<const double> vs);
    void settle(double u, double v, Vec3d& position) const;

    SurfaceEvaluator m_evaluator;
    double m_size = 0;
    double m_lengthU = 0;
    double m_lengthV = 0;
    bool m_isValid = false;
    bool m_isClosedU = false, m_isClosedV = false;
    bool m_isPoleStartU = false, m_isPoleEndU = false, m_isPoleStartV = false, m_isPoleEndV = false;
};

/// Parameters at the breaks of a direction and `pieces - 1` between each two of them; no break
/// closer than 1e-9 of the domain to another.
std::vector<double> refinedBreaks(const KnotVector& knots, std::size_t pieces);

/// At most `count` of the parameters, evenly chosen, the first and the last among them.
std::vector<double> thinned(std::span<const double> parameters, std::size_t count);

} // namespace host::geometry
