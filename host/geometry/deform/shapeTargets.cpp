#include "host/geometry/deform/shapeTargets.h"

#include <algorithm>
#include <cmath>

namespace host::geometry {

std::array<ItemShare, 2> itemShares(std::span<const double> weights, double weight)
{
    if (weights.empty() || !(std::fabs(weight) > 0)) {
        return {};
    }
    const auto above = std::lower_bound(weights.begin(), weights.end(), weight);
    const auto next = static_cast<std::size_t>(above - weights.begin());
    const auto alone = [&](std::size_t item) {
        return std::array<ItemShare, 2>{ItemShare{item, weight / weights[item]}};
    };
    if (above == weights.end()) {
        return alone(next - 1);
    }
    if (above == weights.begin()) {
        return alone(0);
    }
    // 0 is a place of its own, where nothing is taken
    if (weight > 0 && weights[next - 1] < 0) {
        return alone(next);
    }
    if (weight < 0 && weights[next] > 0) {
        return alone(next - 1);
    }
    const double way = (weight - weights[next - 1]) / (weights[next] - weights[next - 1]);
    return {ItemShare{next - 1, 1 - way}, ItemShare{next, way}};
}

void addDeltas(const PointDeltas& deltas, double share, std::span<const float> weights,
               std::span<Vec3d> points)
{
    const std::size_t count = std::min(deltas.points.size(), deltas.offsets.size());
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint32_t point = deltas.points[i];
        if (point < points.size()) {
            const double weight = point < weights.size() ? double{weights[point]} : 1.0;
            points[point] = points[point] + deltas.offsets[i] * (share * weight);
        }
    }
}

} // namespace host::geometry
