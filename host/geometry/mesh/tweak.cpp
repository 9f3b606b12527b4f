#include "host/geometry/mesh/tweak.h"

#include <algorithm>

namespace host::geometry {

std::vector<Vec3f> addOffsets(std::span<const Vec3f> points, std::span<const OffsetRun> runs,
                              std::span<const float> block)
{
    std::vector<Vec3f> moved(points.begin(), points.end());
    addOffsetsTo(moved, runs, block);
    return moved;
}

void addOffsetsTo(std::span<Vec3f> points, std::span<const OffsetRun> runs,
                  std::span<const float> block)
{
    for (const OffsetRun& run : runs) {
        if (run.first >= points.size() || run.offset >= block.size()) {
            continue;
        }
        const std::size_t count =
            std::min({static_cast<std::size_t>(run.count), points.size() - run.first,
                      (block.size() - run.offset) / 3});
        const float* offset = block.data() + run.offset;
        for (std::size_t i = 0; i < count; ++i, offset += 3) {
            Vec3f& point = points[run.first + i];
            point = {point.x + offset[0], point.y + offset[1], point.z + offset[2]};
        }
    }
}

} // namespace host::geometry
