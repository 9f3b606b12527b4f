// A solid for boolean operations: triangles that close, each of which knows where it comes from,
// with points on a grid so fine that no float in use needs more.
#pragma once

#include "host/math/Vec.h"

#include <array>
#include <cstdint>
#include <span>
#include <vector>

namespace host::geometry {

/// What is made of two solids; the numbers are those of the attribute operation.
enum class BooleanOperation : std::uint8_t {
    Union = 1,       ///< what is in either
    Difference = 2,  ///< what is in the first and not in the second
    Intersection = 3 ///< what is in both
};

struct SolidTriangle {
    std::array<std::uint32_t, 3> corners{}; ///< points, counter-clockwise seen from outside
    std::uint32_t source = 0; ///< number of the triangle of which it is a part or the whole
};

/// Whole numbers instead of lengths, which keeps exact arithmetic short: 2^40 cells from the origin
/// to the farthest point.
class SolidGrid {
public:
    SolidGrid() = default;
    /// Points must be finite.
    explicit SolidGrid(std::span<const Vec3f> points);

    /// The nearest place of the grid, in cells.
    Vec3d place(const Vec3f& point) const;
    Vec3f point(const Vec3d& place) const;

private:
    double m_cells = 1; ///< in a centimetre; a power of two
};

struct Solid {
    std::vector<Vec3d> points; ///< whole numbers: places of a grid
    std::vector<SolidTriangle> triangles;
};

/// The space that a solid takes; negative where it is inside out. In cells of the grid.
double volumeOf(const Solid& solid);

/// Smallest box about the points that triangles use; of no triangles: one that contains nothing.
struct SolidBox {
    Vec3d low{1, 1, 1};
    Vec3d high{-1, -1, -1};

    bool isEmpty() const { return !(low.x <= high.x); }
};
SolidBox boxOf(const Solid& solid);
SolidBox boxOfBoth(const SolidBox& a, const SolidBox& b);
/// Whether there is space between two boxes; also where one is empty.
bool areApart(const SolidBox& a, const SolidBox& b);

} // namespace host::geometry
