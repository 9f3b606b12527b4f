#include "host/geometry/mesh/texture/moveUvs.h"

#include "host/math/angle.h"

#include <algorithm>
#include <cmath>

namespace host::geometry {
namespace {

constexpr std::size_t kNumbers = 2; ///< of one texture coordinate

float narrow(double number, float fallback)
{
    const auto result = static_cast<float>(number);
    return std::isfinite(result) ? result : fallback;
}

} // namespace

std::vector<Vec2f> addUvOffsets(std::span<const Vec2f> points, std::span<const OffsetRun> runs,
                                std::span<const float> block)
{
    std::vector<Vec2f> moved(points.begin(), points.end());
    for (const OffsetRun& run : runs) {
        if (run.offset > block.size() || run.first >= moved.size()) {
            continue;
        }
        const std::size_t count =
            std::min({std::size_t{run.count}, (block.size() - run.offset) / kNumbers,
                      moved.size() - run.first});
        const float* offset = block.data() + run.offset;
        for (std::size_t i = 0; i < count; ++i) {
            moved[run.first + i].x += offset[kNumbers * i];
            moved[run.first + i].y += offset[kNumbers * i + 1];
        }
    }
    return moved;
}

std::shared_ptr<const MeshData> moveUvs(const MeshData& mesh, std::size_t set,
                                        std::span<const std::uint32_t> ids, const UvMotion& motion)
{
    const SineCosine turn = sineCosine(motion.angle);
    std::vector<Vec2f> points;
    if (mesh.uvSets[set].points != nullptr) {
        points = *mesh.uvSets[set].points;
    }
    for (const std::uint32_t id : ids) {
        Vec2f& point = points[id];
        const double u = (point.x - motion.pivotU) * motion.scaleU;
        const double v = (point.y - motion.pivotV) * motion.scaleV;
        point = {
            narrow(u * turn.cosine - v * turn.sine + motion.pivotU + motion.translateU, point.x),
            narrow(u * turn.sine + v * turn.cosine + motion.pivotV + motion.translateV, point.y)};
    }
    auto result = std::make_shared<MeshData>(mesh);
    result->uvSets[set].points = std::make_shared<const std::vector<Vec2f>>(std::move(points));
    return result;
}

UvBounds uvBounds(const UvSet& set, std::span<const std::uint32_t> ids)
{
    UvBounds bounds;
    if (ids.empty()) {
        return bounds;
    }
    bounds = {(*set.points)[ids[0]], (*set.points)[ids[0]]};
    for (const std::uint32_t id : ids) {
        const Vec2f& point = (*set.points)[id];
        bounds.low = {std::fmin(bounds.low.x, point.x), std::fmin(bounds.low.y, point.y)};
        bounds.high = {std::fmax(bounds.high.x, point.x), std::fmax(bounds.high.y, point.y)};
    }
    return bounds;
}

UvMotion fitIntoUnit(const UvBounds& bounds, bool keepsRatio, bool isCentered)
{
    const double width = double{bounds.high.x} - bounds.low.x;
    const double height = double{bounds.high.y} - bounds.low.y;
    const double larger = std::fmax(width, height);
    const auto factor = [](double size) { return size > 0 ? 1 / size : 1; };
    UvMotion motion;
    motion.scaleU = factor(keepsRatio ? larger : width);
    motion.scaleV = factor(keepsRatio ? larger : height);
    if (isCentered) {
        motion.pivotU = (double{bounds.high.x} + bounds.low.x) / 2;
        motion.pivotV = (double{bounds.high.y} + bounds.low.y) / 2;
    } else {
        motion.pivotU = bounds.low.x;
        motion.pivotV = bounds.low.y;
    }
    motion.translateU = (isCentered ? 0.5 : 0) - motion.pivotU;
    motion.translateV = (isCentered ? 0.5 : 0) - motion.pivotV;
    return motion;
}

} // namespace host::geometry
