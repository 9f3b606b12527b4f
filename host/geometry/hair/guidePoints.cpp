#include "host/geometry/hair/guidePoints.h"

#include "host/geometry/curve/CurveEvaluator.h"

#include <algorithm>
#include <cmath>

namespace host::geometry {
namespace {

/// The mean of the `degree` knots that belong to each control point.
std::vector<double> grevilleAbscissae(const CurveData& curve)
{
    const auto degree = static_cast<std::size_t>(curve.degree);
    std::vector<double> abscissae(curve.cvCount());
    for (std::size_t cv = 0; cv < abscissae.size(); ++cv) {
        double sum = 0;
        for (std::size_t knot = cv; knot < cv + degree; ++knot) {
            sum += curve.knots[knot];
        }
        abscissae[cv] = sum / static_cast<double>(degree);
    }
    return abscissae;
}

/// The value at a place between entries.
double between(const std::vector<double>& values, double place)
{
    const auto low = std::min(static_cast<std::size_t>(place), values.size() - 1);
    const std::size_t high = std::min(low + 1, values.size() - 1);
    const double part = place - static_cast<double>(low);
    return part > 0 ? values[low] + (values[high] - values[low]) * part : values[low];
}

std::vector<Vec3d> pointsByDensity(const CurveEvaluator& evaluator, const CurveData& curve,
                                   double density)
{
    const auto cvCount = static_cast<double>(curve.cvCount());
    const double wanted = std::isfinite(density) ? std::floor(cvCount * density + 0.5) : cvCount;
    const auto count =
        static_cast<std::size_t>(std::clamp(wanted, 2.0, static_cast<double>(kMaxGuidePoints)));
    const std::vector<double> abscissae = grevilleAbscissae(curve);
    std::vector<Vec3d> points(count);
    for (std::size_t i = 0; i < count; ++i) {
        const double place =
            static_cast<double>(i) * (cvCount - 1) / static_cast<double>(count - 1);
        points[i] = evaluator.point(
            std::clamp(between(abscissae, place), evaluator.start(), evaluator.end()));
    }
    return points;
}

std::vector<Vec3d> pointsByLength(const CurveEvaluator& evaluator, double segmentLength)
{
    std::vector<Vec3d> fine(kMaxGuidePoints);
    std::vector<double> lengths(kMaxGuidePoints, 0);
    const double step = (evaluator.end() - evaluator.start()) / (kMaxGuidePoints - 1);
    for (std::size_t i = 0; i < kMaxGuidePoints; ++i) {
        fine[i] = evaluator.point(evaluator.start() + step * static_cast<double>(i));
        if (i > 0) {
            lengths[i] = lengths[i - 1] + length(fine[i] - fine[i - 1]);
        }
    }
    const double total = lengths.back();
    const double wanted = std::ceil(total / segmentLength - 1e-9) + 1;
    if (!std::isfinite(wanted)) {
        return {fine.front(), fine.back()};
    }
    const auto count =
        static_cast<std::size_t>(std::clamp(wanted, 2.0, static_cast<double>(kMaxGuidePoints)));
    std::vector<Vec3d> points(count, fine.front());
    std::size_t at = 1;
    for (std::size_t i = 1; i < count; ++i) {
        const double reach = total * static_cast<double>(i) / static_cast<double>(count - 1);
        while (at + 1 < kMaxGuidePoints && lengths[at] < reach) {
            ++at;
        }
        const double piece = lengths[at] - lengths[at - 1];
        const double part = piece > 0 ? std::min(1.0, (reach - lengths[at - 1]) / piece) : 1;
        points[i] = fine[at - 1] + (fine[at] - fine[at - 1]) * part;
    }
    return points;
}

} // namespace

std::vector<Vec3d> guidePoints(const CurveData& curve, const GuideSampling& sampling,
                               const Matrix4& matrix)
{
    const CurveEvaluator evaluator(curve);
    if (!evaluator.isValid() || curve.dimension != 3) {
        return {};
    }
    std::vector<Vec3d> points = sampling.isFixedLength && sampling.segmentLength > 0
                                    ? pointsByLength(evaluator, sampling.segmentLength)
                                    : pointsByDensity(evaluator, curve, sampling.density);
    for (Vec3d& point : points) {
        point = transformPoint(point, matrix);
    }
    return points;
}

std::shared_ptr<const CurveData> curveThrough(const std::vector<Vec3d>& points, double degree)
{
    if (points.size() < 2) {
        return nullptr;
    }
    constexpr double kMaxDegree = 7; // the highest that files use
    const double highest = std::min(kMaxDegree, static_cast<double>(points.size() - 1));
    auto curve = std::make_shared<CurveData>();
    curve->degree = degree >= 1 ? static_cast<std::int32_t>(std::min(degree, highest)) : 1;
    const auto order = static_cast<std::size_t>(curve->degree);
    curve->spans = static_cast<std::int32_t>(points.size() - order);
    for (std::size_t knot = 0; knot < points.size() + order - 1; ++knot) {
        const std::size_t whole = knot < order ? 0 : knot - order + 1;
        curve->knots.push_back(
            static_cast<double>(std::min(whole, static_cast<std::size_t>(curve->spans))));
    }
    curve->poles.reserve(3 * points.size());
    for (const Vec3d& point : points) {
        curve->poles.insert(curve->poles.end(), {point.x, point.y, point.z});
    }
    return curve;
}

} // namespace host::geometry
