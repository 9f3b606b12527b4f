#include "host/geometry/nurbs/SurfaceEvaluator.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace host::geometry {
namespace {

/// A derivative times the length of its domain that is shorter than this share of the surface's
/// extent is none.
constexpr double kDegenerate = 1e-10;
/// Sine of the angle below which two derivatives count as parallel.
constexpr double kParallel = 1e-9;
/// Steps towards the middle of the domain, as shares of the way, by which a normal is looked for
/// beside a point that has none.
constexpr std::array<double, 3> kSteps{1e-6, 1e-4, 1e-2};

double extentOf(const SurfaceData& surface)
{
    double extent = 0;
    for (std::size_t c = 0; c < 3; ++c) {
        double low = surface.poles[c];
        double high = low;
        for (std::size_t at = c; at < surface.poles.size(); at += surface.stride()) {
            low = std::min(low, surface.poles[at]);
            high = std::max(high, surface.poles[at]);
        }
        extent = std::max(extent, high - low);
    }
    return extent;
}

std::size_t degreeOf(const KnotVector& knots)
{
    return static_cast<std::size_t>(knots.degree());
}

std::vector<SplineBasis> basisOf(const KnotVector& knots, std::span<const double> parameters)
{
    std::vector<SplineBasis> result(parameters.size());
    for (std::size_t i = 0; i < parameters.size(); ++i) {
        knots.evaluate(parameters[i], result[i]);
    }
    return result;
}

/// The control points of the curve that a fixed u leaves, and of its derivative by u.
struct Row {
    std::vector<HomogeneousPoint> value, slope;
};

void contract(const std::vector<HomogeneousPoint>& points, const SplineBasis& basis,
              std::size_t degree, Row& row)
{
    const std::size_t width = row.value.size();
    std::fill(row.value.begin(), row.value.end(), HomogeneousPoint{});
    std::fill(row.slope.begin(), row.slope.end(), HomogeneousPoint{});
    for (std::size_t i = 0; i <= degree; ++i) {
        const HomogeneousPoint* line = points.data() + (basis.firstCv + i) * width;
        for (std::size_t j = 0; j < width; ++j) {
            row.value[j].add(line[j], basis.value[i]);
            row.slope[j].add(line[j], basis.first[i]);
        }
    }
}

} // namespace

/// Sums over the control points, then what they project to: the point and its derivatives by u, by
/// v, and by both.
struct SurfaceEvaluator::Derivatives {
    HomogeneousPoint sum, sumU, sumV, sumUv;
    Vec3d position, du, dv, duv;
    double towardsU = 1, towardsV = 1; ///< sign of the way to the middle of the domain
};

std::vector<HomogeneousPoint> homogeneousPoints(const SurfaceData& surface)
{
    const auto isFinite = [](double number) { return std::isfinite(number); };
    if (surface.poles.size() % surface.stride() != 0 ||
        !std::all_of(surface.poles.begin(), surface.poles.end(), isFinite)) {
        return {};
    }
    std::vector<HomogeneousPoint> points;
    points.reserve(surface.poles.size() / surface.stride());
    for (std::size_t at = 0; at < surface.poles.size(); at += surface.stride()) {
        const double* pole = surface.poles.data() + at;
        points.push_back(homogeneous({pole[0], pole[1], pole[2]}, surface.rational ? pole[3] : 1));
    }
    return points;
}

SurfaceEvaluator::SurfaceEvaluator(const SurfaceData& surface)
    : m_u(surface.knotsU, surface.degreeU, surface.formU)
    , m_v(surface.knotsV, surface.degreeV, surface.formV)
    , m_points(homogeneousPoints(surface))
    , m_isRational(surface.rational)
{
    m_isValid = m_u.isValid() && m_v.isValid() && !m_points.empty() &&
                m_points.size() / m_u.cvCount() == m_v.cvCount() &&
                m_points.size() % m_u.cvCount() == 0;
    m_extent = m_isValid ? extentOf(surface) : 0;
}

void SurfaceEvaluator::project(Derivatives& d) const
{
    d.position = d.sum.vector();
    d.du = d.sumU.vector();
    d.dv = d.sumV.vector();
    d.duv = d.sumUv.vector();
    if (!m_isRational || d.sum.w == 0) {
        return;
    }
    // The derivatives of the quotient S = A / w.
    const double inverse = 1 / d.sum.w;
    d.position = d.sum.projected();
    d.du = (d.du - d.position * d.sumU.w) * inverse;
    d.dv = (d.dv - d.position * d.sumV.w) * inverse;
    d.duv = (d.duv - d.dv * d.sumU.w - d.du * d.sumV.w - d.position * d.sumUv.w) * inverse;
}

SurfaceEvaluator::Derivatives SurfaceEvaluator::derivatives(const SplineBasis& u,
                                                            const SplineBasis& v) const
{
    Derivatives d;
    for (std::size_t i = 0; i <= degreeOf(m_u); ++i) {
        const HomogeneousPoint* line =
            m_points.data() + (u.firstCv + i) * m_v.cvCount() + v.firstCv;
        HomogeneousPoint value;
        HomogeneousPoint slope;
        for (std::size_t j = 0; j <= degreeOf(m_v); ++j) {
            value.add(line[j], v.value[j]);
            slope.add(line[j], v.first[j]);
        }
        d.sum.add(value, u.value[i]);
        d.sumU.add(value, u.first[i]);
        d.sumV.add(slope, u.value[i]);
        d.sumUv.add(slope, u.first[i]);
    }
    project(d);
    return d;
}

Vec3d SurfaceEvaluator::point(double u, double v) const
{
    SplineBasis basisU;
    SplineBasis basisV;
    m_u.evaluateValues(u, basisU);
    m_v.evaluateValues(v, basisV);
    HomogeneousPoint sum;
    for (std::size_t i = 0; i <= degreeOf(m_u); ++i) {
        const HomogeneousPoint* line =
            m_points.data() + (basisU.firstCv + i) * m_v.cvCount() + basisV.firstCv;
        HomogeneousPoint value;
        for (std::size_t j = 0; j <= degreeOf(m_v); ++j) {
            value.add(line[j], basisV.value[j]);
        }
        sum.add(value, basisU.value[i]);
    }
    return m_isRational ? sum.projected() : sum.vector();
}

SurfacePoint SurfaceEvaluator::evaluate(double u, double v) const
{
    SplineBasis basisU;
    SplineBasis basisV;
    m_u.evaluate(u, basisU);
    m_v.evaluate(v, basisV);
    const Derivatives d = derivatives(basisU, basisV);
    return {d.position, d.du, d.dv, normalAt(u, v, d)};
}

/// The normal from the derivatives at a point: du x dv, or where one of them vanishes, that with
/// the derivative one step further into the surface (du at v + h is h duv).
bool SurfaceEvaluator::findNormal(const Derivatives& d, Vec3d& normal) const
{
    const double lengthU = length(d.du);
    const double lengthV = length(d.dv);
    const double least = kDegenerate * m_extent;
    const bool hasU = lengthU * (m_u.end() - m_u.start()) > least;
    const bool hasV = lengthV * (m_v.end() - m_v.start()) > least;
    Vec3d product;
    double scale = 0;
    if (hasU && hasV) {
        product = cross(d.du, d.dv);
        scale = lengthU * lengthV;
    } else if (hasV) {
        product = cross(d.duv, d.dv) * d.towardsV;
        scale = length(d.duv) * lengthV;
    } else if (hasU) {
        product = cross(d.du, d.duv) * d.towardsU;
        scale = lengthU * length(d.duv);
    }
    const double size = length(product);
    if (!(size > kParallel * scale) || !(scale > 0)) {
        return false;
    }
    normal = product * (1 / size);
    return true;
}

Vec3d SurfaceEvaluator::normalAt(double u, double v, const Derivatives& known) const
{
    const double size = length(cross(known.du, known.dv));
    const double scale = length(known.du) * length(known.dv);
    Derivatives d = known;
    d.towardsU = m_u.inside(u) * 2 <= m_u.start() + m_u.end() ? 1 : -1;
    d.towardsV = m_v.inside(v) * 2 <= m_v.start() + m_v.end() ? 1 : -1;
    Vec3d normal;
    if (findNormal(d, normal)) {
        return normal;
    }
    normal = normalBeside(u, v);
    if (dot(normal, normal) > 0 || !(size > kParallel * scale)) {
        return normal;
    }
    return cross(known.du, known.dv) * (1 / size);
}

Vec3d SurfaceEvaluator::normalBeside(double u, double v) const
{
    u = m_u.inside(u);
    v = m_v.inside(v);
    const double wayU = (m_u.start() + m_u.end()) / 2 - u;
    const double wayV = (m_v.start() + m_v.end()) / 2 - v;
    // From the very middle the way is towards the start.
    const double stepU = wayU != 0 ? wayU : m_u.start() - u;
    const double stepV = wayV != 0 ? wayV : m_v.start() - v;
    for (const double step : kSteps) {
        SplineBasis basisU;
        SplineBasis basisV;
        m_u.evaluate(u + stepU * step, basisU);
        m_v.evaluate(v + stepV * step, basisV);
        Vec3d normal;
        if (findNormal(derivatives(basisU, basisV), normal)) {
            return normal;
        }
    }
    return {};
}

void SurfaceEvaluator::evaluateGrid(std::span<const double> us, std::span<const double> vs,
                                    std::span<SurfacePoint> points) const
{
    const std::vector<SplineBasis> columns = basisOf(m_v, vs);
    Row row{std::vector<HomogeneousPoint>(m_v.cvCount()),
            std::vector<HomogeneousPoint>(m_v.cvCount())};
    auto out = points.begin();
    for (const double u : us) {
        SplineBasis basis;
        m_u.evaluate(u, basis);
        contract(m_points, basis, degreeOf(m_u), row);
        for (std::size_t column = 0; column < vs.size() && out != points.end(); ++column, ++out) {
            const SplineBasis& across = columns[column];
            Derivatives d;
            for (std::size_t j = 0; j <= degreeOf(m_v); ++j) {
                const std::size_t cv = across.firstCv + j;
                d.sum.add(row.value[cv], across.value[j]);
                d.sumU.add(row.slope[cv], across.value[j]);
                d.sumV.add(row.value[cv], across.first[j]);
                d.sumUv.add(row.slope[cv], across.first[j]);
            }
            project(d);
            *out = {d.position, d.du, d.dv, normalAt(u, vs[column], d)};
        }
    }
}

void SurfaceEvaluator::pointGrid(std::span<const double> us, std::span<const double> vs,
                                 std::span<Vec3d> points) const
{
    const std::vector<SplineBasis> columns = basisOf(m_v, vs);
    Row row{std::vector<HomogeneousPoint>(m_v.cvCount()),
            std::vector<HomogeneousPoint>(m_v.cvCount())};
    auto out = points.begin();
    for (const double u : us) {
        SplineBasis basis;
        m_u.evaluate(u, basis);
        contract(m_points, basis, degreeOf(m_u), row);
        for (std::size_t column = 0; column < vs.size() && out != points.end(); ++column, ++out) {
            const SplineBasis& across = columns[column];
            HomogeneousPoint sum;
            for (std::size_t j = 0; j <= degreeOf(m_v); ++j) {
                sum.add(row.value[across.firstCv + j], across.value[j]);
            }
            *out = m_isRational ? sum.projected() : sum.vector();
        }
    }
}

bool isValidSurface(const SurfaceData& surface)
{
    return SurfaceEvaluator(surface).isValid();
}

} // namespace host::geometry
