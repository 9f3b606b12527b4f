// Texture coordinates moved: by offsets, about a pivot, flipped, fitted into the unit square.
#pragma once

#include "host/geometry/mesh/MeshData.h"
#include "host/geometry/mesh/tweak.h"

#include <cstdint>
#include <memory>
#include <span>

namespace host::geometry {

/// The coordinates plus offsets, two numbers for each; as `addOffsets` otherwise.
std::vector<Vec2f> addUvOffsets(std::span<const Vec2f> points, std::span<const OffsetRun> runs,
                                std::span<const float> block);

/// Scaled, then rotated about the pivot, then translated.
struct UvMotion {
    double pivotU = 0;
    double pivotV = 0;
    double scaleU = 1;
    double scaleV = 1;
    double angle = 0; ///< radians, counter-clockwise
    double translateU = 0;
    double translateV = 0;
};

/// The mesh with some coordinates (ids below their number) of one of its sets moved.
std::shared_ptr<const MeshData> moveUvs(const MeshData& mesh, std::size_t set,
                                        std::span<const std::uint32_t> ids, const UvMotion& motion);

/// The box round coordinates; all 0 for none.
struct UvBounds {
    Vec2f low;
    Vec2f high;
};
UvBounds uvBounds(const UvSet& set, std::span<const std::uint32_t> ids);

/// What brings the box into the unit square: as far as it fits without being stretched, or, where
/// `keepsRatio` is false, over all of it. A box without width (height) stays that narrow. The low
/// corner comes to 0, or with `isCentered` the middle to 0.5.
UvMotion fitIntoUnit(const UvBounds& bounds, bool keepsRatio, bool isCentered);

} // namespace host::geometry
