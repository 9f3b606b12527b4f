#include "host/geometry/curve/KnotVector.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace host::geometry {
namespace {

/// From the functions of degree d - 1 on span k to those of degree d (Cox and de Boor), in place.
void raiseDegree(const double* knots, std::size_t k, std::size_t d, double u, double* row)
{
    double saved = 0;
    for (std::size_t r = 0; r < d; ++r) {
        const double right = knots[k + r + 1];
        const double left = knots[k + r + 1 - d];
        const double share = row[r] / (right - left);
        row[r] = saved + (right - u) * share;
        saved = (u - left) * share;
    }
    row[d] = saved;
}

/// The derivative of the functions of degree d from the (derivatives of) functions of degree d - 1:
/// N' = d (N[r-1] / (t[k+r] - t[k+r-d]) - N[r] / (t[k+r+1] - t[k+r+1-d])).
void differentiate(const double* knots, std::size_t k, std::size_t d, const double* lower,
                   double* row)
{
    double saved = 0;
    for (std::size_t r = 0; r < d; ++r) {
        const double share =
            static_cast<double>(d) * lower[r] / (knots[k + r + 1] - knots[k + r + 1 - d]);
        row[r] = saved - share;
        saved = share;
    }
    row[d] = saved;
}

} // namespace

KnotVector::KnotVector(std::vector<double> knots, std::int32_t degree, SplineForm form)
    : m_knots(std::move(knots)), m_degree(degree), m_form(form)
{
    if (degree < 1 || degree > kMaxSplineDegree ||
        m_knots.size() < 2 * static_cast<std::size_t>(degree)) {
        return;
    }
    const auto isFinite = [](double knot) { return std::isfinite(knot); };
    if (!std::all_of(m_knots.begin(), m_knots.end(), isFinite) ||
        !std::is_sorted(m_knots.begin(), m_knots.end())) {
        return;
    }
    m_cvCount = m_knots.size() + 1 - static_cast<std::size_t>(degree);
    m_start = m_knots[static_cast<std::size_t>(degree) - 1];
    m_end = m_knots[m_cvCount - 1];
    m_isValid = m_end > m_start && std::isfinite(m_knots.back() - m_knots.front());
}

double KnotVector::inside(double u) const
{
    if (u >= m_start && u <= m_end) {
        return u;
    }
    if (m_form == SplineForm::Periodic && std::isfinite(u)) {
        const double turned = std::fmod(u - m_start, m_end - m_start);
        return std::clamp(turned < 0 ? m_end + turned : m_start + turned, m_start, m_end);
    }
    return u > m_end ? m_end : m_start;
}

std::size_t KnotVector::findSpan(double u) const
{
    const auto first = m_knots.begin() + (m_degree - 1);
    const auto last = m_knots.begin() + static_cast<std::ptrdiff_t>(m_cvCount);
    // Past the last knot that is not above u; at the end before the knots that equal it.
    const auto above =
        u < m_end ? std::upper_bound(first, last, u) : std::lower_bound(first, last, m_end);
    return static_cast<std::size_t>(above - m_knots.begin()) - 1;
}

void KnotVector::evaluateValues(double u, SplineBasis& basis) const
{
    const auto degree = static_cast<std::size_t>(m_degree);
    u = inside(u);
    const std::size_t k = findSpan(u);
    basis.firstCv = k + 1 - degree;
    basis.value[0] = 1;
    for (std::size_t d = 1; d <= degree; ++d) {
        raiseDegree(m_knots.data(), k, d, u, basis.value.data());
    }
}

void KnotVector::evaluate(double u, SplineBasis& basis) const
{
    const auto degree = static_cast<std::size_t>(m_degree);
    const double* knots = m_knots.data();
    u = inside(u);
    const std::size_t k = findSpan(u);
    basis.firstCv = k + 1 - degree;
    basis.value[0] = 1;
    SplineBasis::Row slopes; // first derivatives one degree lower
    slopes[0] = 0;
    for (std::size_t d = 1; d <= degree; ++d) {
        if (d + 1 == degree) {
            differentiate(knots, k, d, basis.value.data(), slopes.data());
        }
        if (d == degree) {
            differentiate(knots, k, d, basis.value.data(), basis.first.data());
            differentiate(knots, k, d, slopes.data(), basis.second.data());
        }
        raiseDegree(knots, k, d, u, basis.value.data());
    }
}

std::vector<double> KnotVector::breaks() const
{
    std::vector<double> result;
    for (auto i = static_cast<std::size_t>(m_degree) - 1; m_isValid && i < m_cvCount; ++i) {
        if (result.empty() || m_knots[i] > result.back()) {
            result.push_back(m_knots[i]);
        }
    }
    return result;
}

std::size_t KnotVector::multiplicity(double u, double tolerance) const
{
    return static_cast<std::size_t>(std::count_if(m_knots.begin(), m_knots.end(), [&](double knot) {
        return std::fabs(knot - u) <= tolerance;
    }));
}

} // namespace host::geometry
