#include "host/geometry/curve/arcLength.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace host::geometry {
namespace {

constexpr std::size_t kPiecesPerSpan = 8;

/// Places in -1..1 and weights of Gauss's rule of five points.
constexpr std::array<double, 5> kPlaces{0, -0.5384693101056831, 0.5384693101056831,
                                        -0.9061798459386640, 0.9061798459386640};
constexpr std::array<double, 5> kWeights{0.5688888888888889, 0.4786286704993665, 0.4786286704993665,
                                         0.2369268850561891, 0.2369268850561891};

/// Newton's step towards the foot of the perpendicular; the parameter itself where it leads
/// nowhere.
double stepped(const CurveEvaluator& curve, const Vec3d& target, double u)
{
    const CurvePoint here = curve.evaluate(u);
    const Vec3d away = here.position - target;
    const double slope = dot(here.first, here.first) + dot(away, here.second);
    const double next = u - dot(away, here.first) / slope;
    return slope > 0 && std::isfinite(next) ? curve.knots().inside(next) : u;
}

} // namespace

ArcLengthTable::ArcLengthTable(const CurveEvaluator& curve) : m_curve(curve)
{
    const std::vector<double> breaks = curve.knots().breaks();
    m_parameters.push_back(breaks.front());
    m_lengths.push_back(0);
    for (std::size_t i = 0; i + 1 < breaks.size(); ++i) {
        const double step = (breaks[i + 1] - breaks[i]) / kPiecesPerSpan;
        for (std::size_t piece = 0; piece < kPiecesPerSpan; ++piece) {
            const double from = breaks[i] + step * static_cast<double>(piece);
            const double to = piece + 1 < kPiecesPerSpan ? from + step : breaks[i + 1];
            m_lengths.push_back(m_lengths.back() + between(from, to));
            m_parameters.push_back(to);
        }
    }
}

double ArcLengthTable::between(double from, double to) const
{
    double sum = 0;
    for (std::size_t i = 0; i < kPlaces.size(); ++i) {
        const double u = (from + to) / 2 + kPlaces[i] * (to - from) / 2;
        sum += kWeights[i] * length(m_curve.evaluate(u).first);
    }
    return sum * (to - from) / 2;
}

double ArcLengthTable::lengthTo(double u) const
{
    u = std::clamp(m_curve.knots().inside(u), m_parameters.front(), m_parameters.back());
    const auto above = std::upper_bound(m_parameters.begin(), m_parameters.end(), u);
    const auto piece = static_cast<std::size_t>(above - m_parameters.begin()) - 1;
    return m_lengths[piece] + between(m_parameters[piece], u);
}

double ArcLengthTable::parameterAt(double wanted) const
{
    if (!(wanted > 0)) {
        return m_parameters.front();
    }
    const auto above = std::lower_bound(m_lengths.begin(), m_lengths.end(), wanted);
    if (above == m_lengths.end()) {
        return m_parameters.back();
    }
    const auto piece = static_cast<std::size_t>(above - m_lengths.begin());
    double low = m_parameters[piece - 1];
    double high = m_parameters[piece];
    const double base = low;
    const double rest = wanted - m_lengths[piece - 1];
    // Newton's steps, kept inside bounds that close in.
    double u = low + (high - low) * rest / (m_lengths[piece] - m_lengths[piece - 1]);
    for (int round = 0; round < 40; ++round) {
        const double error = between(base, u) - rest;
        (error > 0 ? high : low) = u;
        const double speed = length(m_curve.evaluate(u).first);
        const double next = speed > 0 ? u - error / speed : u;
        const double safe = next > low && next < high ? next : (low + high) / 2;
        if (std::fabs(safe - u) <= 1e-14 * (std::fabs(u) + 1)) {
            return safe;
        }
        u = safe;
    }
    return u;
}

double nearestParameter(const CurveEvaluator& curve, const Vec3d& target)
{
    const std::vector<double> breaks = curve.knots().breaks();
    const std::size_t samples = std::clamp<std::size_t>(kMaxNearestSamples / breaks.size(), 2, 16);
    double best = breaks.front();
    double least = INFINITY;
    const auto consider = [&](double u) {
        const Vec3d away = curve.point(u) - target;
        const double distance = dot(away, away);
        if (distance < least) {
            least = distance;
            best = u;
        }
    };
    for (std::size_t i = 0; i + 1 < breaks.size(); ++i) {
        for (std::size_t s = 0; s <= samples; ++s) {
            const double share = static_cast<double>(s) / static_cast<double>(samples);
            consider(breaks[i] + (breaks[i + 1] - breaks[i]) * share);
        }
    }
    double u = best;
    for (int round = 0; round < 20; ++round) {
        const double next = stepped(curve, target, u);
        const bool isDone = std::fabs(next - u) <= 1e-15 * (std::fabs(u) + 1);
        u = next;
        if (isDone) {
            break;
        }
    }
    consider(u);
    return best;
}

} // namespace host::geometry
