#include "host/geometry/tessellation/SurfaceSheet.h"

#include <algorithm>
#include <cmath>

namespace host::geometry {
namespace {

constexpr std::size_t kPiecesPerSpan = 4; ///< of a span that is measured
constexpr std::size_t kMeasuredLines = 65;

/// Whether two rows of points are at the same places; one row against its first point when `other`
/// is a single one.
bool areSame(std::span<const Vec3d> row, std::span<const Vec3d> other, double distance)
{
    for (std::size_t i = 0; i < row.size(); ++i) {
        if (!(length(row[i] - other[other.size() == 1 ? 0 : i]) <= distance)) {
            return false;
        }
    }
    return true;
}

double lengthOf(std::span<const Vec3d> row)
{
    double sum = 0;
    for (std::size_t i = 1; i < row.size(); ++i) {
        sum += length(row[i] - row[i - 1]);
    }
    return sum;
}

double diagonal(std::span<const Vec3d> points)
{
    Vec3d low = points.front();
    Vec3d high = low;
    for (const Vec3d& p : points) {
        low = {std::min(low.x, p.x), std::min(low.y, p.y), std::min(low.z, p.z)};
        high = {std::max(high.x, p.x), std::max(high.y, p.y), std::max(high.z, p.z)};
    }
    return length(high - low);
}

} // namespace

std::vector<double> refinedBreaks(const KnotVector& knots, std::size_t pieces)
{
    const double apart = 1e-9 * (knots.end() - knots.start());
    std::vector<double> result{knots.start()};
    const std::vector<double> breaks = knots.breaks();
    for (const double next : breaks) {
        const bool isLast = next >= knots.end();
        if (next - result.back() <= apart || (!isLast && knots.end() - next <= apart)) {
            continue;
        }
        const double from = result.back();
        for (std::size_t i = 1; i < pieces; ++i) {
            result.push_back(from + (next - from) *
                                        (static_cast<double>(i) / static_cast<double>(pieces)));
        }
        result.push_back(isLast ? knots.end() : next);
    }
    return result;
}

std::vector<double> thinned(std::span<const double> parameters, std::size_t count)
{
    if (parameters.size() <= count) {
        return {parameters.begin(), parameters.end()};
    }
    std::vector<double> result(count);
    for (std::size_t i = 0; i < count; ++i) {
        result[i] = parameters[i * (parameters.size() - 1) / (count - 1)];
    }
    return result;
}

SurfaceSheet::SurfaceSheet(const SurfaceData& surface) : m_evaluator(surface)
{
    if (m_evaluator.isValid()) {
        measure();
        m_isValid = std::isfinite(m_size);
    }
}

void SurfaceSheet::measure()
{
    const auto us = thinned(refinedBreaks(m_evaluator.knotsU(), kPiecesPerSpan), kMeasuredLines);
    const auto vs = thinned(refinedBreaks(m_evaluator.knotsV(), kPiecesPerSpan), kMeasuredLines);
    std::vector<Vec3d> points(us.size() * vs.size());
    m_evaluator.pointGrid(us, vs, points);
    m_size = diagonal(points);
    std::vector<Vec3d> line(us.size());
    for (std::size_t k = 0; k < vs.size(); ++k) {
        for (std::size_t i = 0; i < us.size(); ++i) {
            line[i] = points[i * vs.size() + k];
        }
        m_lengthU += lengthOf(line) / static_cast<double>(vs.size());
    }
    for (std::size_t i = 0; i < us.size(); ++i) {
        m_lengthV += lengthOf(std::span(points).subspan(i * vs.size(), vs.size())) /
                     static_cast<double>(us.size());
    }
    findSeams(us, vs);
}

void SurfaceSheet::findSeams(std::span<const double> us, std::span<const double> vs)
{
    const std::array<double, 2> endsU{us.front(), us.back()};
    const std::array<double, 2> endsV{vs.front(), vs.back()};
    std::vector<Vec3d> alongV(2 * vs.size());
    m_evaluator.pointGrid(endsU, vs, alongV);
    std::vector<Vec3d> startV(us.size());
    std::vector<Vec3d> endV(us.size());
    m_evaluator.pointGrid(us, std::span(endsV).first(1), startV);
    m_evaluator.pointGrid(us, std::span(endsV).last(1), endV);
    const std::span<const Vec3d> startU = std::span(alongV).first(vs.size());
    const std::span<const Vec3d> endU = std::span(alongV).last(vs.size());
    const double distance = kSamePlace * m_size;
    m_isClosedU = areSame(startU, endU, distance);
    m_isClosedV = areSame(startV, endV, distance);
    m_isPoleStartU = areSame(startU, startU.first(1), distance);
    m_isPoleEndU = areSame(endU, endU.first(1), distance);
    m_isPoleStartV = areSame(startV, std::span<const Vec3d>(startV).first(1), distance);
    m_isPoleEndV = areSame(endV, std::span<const Vec3d>(endV).first(1), distance);
}

/// Replaces a position on the edge of the domain by the one that stands for it.
void SurfaceSheet::settle(double u, double v, Vec3d& position) const
{
    const bool isEndU = u >= m_evaluator.endU();
    const bool isEndV = v >= m_evaluator.endV();
    if (!isEndU && !isEndV && u > m_evaluator.startU() && v > m_evaluator.startV()) {
        return;
    }
    double placeU = isEndU && m_isClosedU ? m_evaluator.startU() : u;
    double placeV = isEndV && m_isClosedV ? m_evaluator.startV() : v;
    if ((isEndV && m_isPoleEndV) || (v <= m_evaluator.startV() && m_isPoleStartV)) {
        placeU = m_evaluator.startU();
    }
    if ((isEndU && m_isPoleEndU) || (u <= m_evaluator.startU() && m_isPoleStartU)) {
        placeV = m_evaluator.startV();
    }
    if (placeU != u || placeV != v) {
        position = m_evaluator.point(placeU, placeV);
    }
}

SurfacePoint SurfaceSheet::at(double u, double v) const
{
    SurfacePoint point = m_evaluator.evaluate(u, v);
    settle(u, v, point.position);
    return point;
}

void SurfaceSheet::block(std::span<const double> us, std::span<const double> vs,
                         std::span<SurfacePoint> points) const
{
    m_evaluator.evaluateGrid(us, vs, points);
    for (std::size_t i = 0; i < us.size(); ++i) {
        const bool isEdge = us[i] <= m_evaluator.startU() || us[i] >= m_evaluator.endU();
        for (std::size_t k = 0; k < vs.size(); ++k) {
            if (isEdge || vs[k] <= m_evaluator.startV() || vs[k] >= m_evaluator.endV()) {
                settle(us[i], vs[k], points[i * vs.size() + k].position);
            }
        }
    }
}

void SurfaceSheet::positions(std::span<const double> us, std::span<const double> vs,
                             std::span<Vec3d> points) const
{
    m_evaluator.pointGrid(us, vs, points);
    for (std::size_t i = 0; i < us.size(); ++i) {
        for (std::size_t k = 0; k < vs.size(); ++k) {
            settle(us[i], vs[k], points[i * vs.size() + k]);
        }
    }
}

} // namespace host::geometry
