// Points moved by sparse offsets.
#pragma once

#include "host/math/Vec.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace host::geometry {

/// Offsets of the points first .. first + count - 1: x y z of each, from `offset` on in the block.
struct OffsetRun {
    std::uint32_t first = 0;
    std::uint32_t count = 0;
    std::size_t offset = 0;
};

/// The points plus the offsets. Runs are added in turn; offsets for points that are not there, and
/// runs beyond the end of the block, have no effect.
std::vector<Vec3f> addOffsets(std::span<const Vec3f> points, std::span<const OffsetRun> runs,
                              std::span<const float> block);
/// The same in place.
void addOffsetsTo(std::span<Vec3f> points, std::span<const OffsetRun> runs,
                  std::span<const float> block);

} // namespace host::geometry
