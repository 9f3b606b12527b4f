#include "host/geometry/curve/CurveEvaluator.h"

#include <algorithm>
#include <cmath>

namespace host::geometry {
namespace {

bool isValidRecord(const KnotVector& knots, const std::vector<HomogeneousPoint>& points)
{
    return knots.isValid() && !points.empty() && points.size() == knots.cvCount();
}

} // namespace

std::vector<HomogeneousPoint> homogeneousPoints(const CurveData& curve)
{
    const auto isFinite = [](double number) { return std::isfinite(number); };
    if ((curve.dimension != 2 && curve.dimension != 3) ||
        curve.poles.size() % curve.stride() != 0 ||
        !std::all_of(curve.poles.begin(), curve.poles.end(), isFinite)) {
        return {};
    }
    std::vector<HomogeneousPoint> points;
    points.reserve(curve.cvCount());
    for (std::size_t at = 0; at < curve.poles.size(); at += curve.stride()) {
        const double* pole = curve.poles.data() + at;
        const double weight = curve.rational ? pole[curve.dimension] : 1;
        points.push_back(
            homogeneous({pole[0], pole[1], curve.dimension == 3 ? pole[2] : 0}, weight));
    }
    return points;
}

CurveEvaluator::CurveEvaluator(const CurveData& curve)
    : m_knots(curve.knots, curve.degree, curve.form)
    , m_points(homogeneousPoints(curve))
    , m_isRational(curve.rational)
    , m_isValid(isValidRecord(m_knots, m_points))
{
}

Vec3d CurveEvaluator::point(double u) const
{
    SplineBasis basis;
    m_knots.evaluateValues(u, basis);
    const HomogeneousPoint* points = m_points.data() + basis.firstCv;
    HomogeneousPoint sum;
    for (std::size_t i = 0; i <= static_cast<std::size_t>(m_knots.degree()); ++i) {
        sum.add(points[i], basis.value[i]);
    }
    return m_isRational ? sum.projected() : sum.vector();
}

CurvePoint CurveEvaluator::evaluate(double u) const
{
    SplineBasis basis;
    m_knots.evaluate(u, basis);
    const HomogeneousPoint* points = m_points.data() + basis.firstCv;
    HomogeneousPoint sum;
    HomogeneousPoint first;
    HomogeneousPoint second;
    for (std::size_t i = 0; i <= static_cast<std::size_t>(m_knots.degree()); ++i) {
        sum.add(points[i], basis.value[i]);
        first.add(points[i], basis.first[i]);
        second.add(points[i], basis.second[i]);
    }
    if (!m_isRational || sum.w == 0) {
        return {sum.vector(), first.vector(), second.vector()};
    }
    // Of the quotient C = A / w: C' = (A' - w' C) / w and C'' = (A'' - 2 w' C' - w'' C) / w.
    CurvePoint result;
    result.position = sum.projected();
    result.first = (first.vector() - result.position * first.w) * (1 / sum.w);
    result.second =
        (second.vector() - result.first * (2 * first.w) - result.position * second.w) * (1 / sum.w);
    return result;
}

bool isValidCurve(const CurveData& curve)
{
    return CurveEvaluator(curve).isValid();
}

} // namespace host::geometry
