// Triangles between loops in the plane: outer boundaries, holes, and points inside.
#pragma once

#include "host/support/Expected.h"

#include <cstdint>
#include <span>
#include <vector>

namespace host::geometry {

struct PlanePosition {
    double x = 0;
    double y = 0;
    friend bool operator==(const PlanePosition&, const PlanePosition&) = default;
};

/// A directed piece of a loop between two points.
struct PlaneSegment {
    std::uint32_t from = 0;
    std::uint32_t to = 0;
    bool isHole = false;
};

/// Which places are inside. Loops are counted round a place: +1 for each turn counter-clockwise, -1
/// for each clockwise; turns of outer loops and of holes on their own.
enum class FillRule : std::uint8_t {
    EvenOdd,        ///< an odd number of turns, outer loops and holes together
    OuterMinusHoles ///< the outer loops' turns are not 0 and the holes' turns are 0
};

struct PlaneTriangulation {
    std::vector<std::uint32_t> triangles; ///< three indices each, counter-clockwise
    /// Places where lines cross; their indices follow those of the input points.
    std::vector<PlanePosition> added;
    /// Per input point, the point that stands for it: the first one at its place. Triangles name no
    /// other.
    std::vector<std::uint32_t> standIn;
    bool hasDetours = false; ///< too many crossings: some lines were led round them
};

/// Limits of one call: points, and steps per point on top of kFreeSteps.
inline constexpr std::size_t kMaxPlanePoints = std::size_t{1} << 26;
inline constexpr std::uint64_t kFreeSteps = 20'000'000;
inline constexpr std::uint64_t kStepsPerPoint = 50;

/// A constrained Delaunay triangulation of the inside.
///
/// The segments together must be loops: as many begin at each point as end there. Loops may touch
/// and cross themselves and each other, run along each other, and repeat points; segments without a
/// length are passed over. Points that no segment uses are put in where they are inside. Places are
/// rounded to 2^-30 of the points' box and compared exactly from then on: of two lines that cross,
/// each is bent by up to half such a step, and points at one rounded place are one. No triangle is
/// turned over or without area on that grid.
///
/// Time     n log n for n points, and a step per edge that a segment crosses; bounded.
/// Fails    (BadInput) when a number is not finite or an index is out of range, (Limit) beyond
///          kMaxPlanePoints and the allowance of steps.
Expected<PlaneTriangulation> triangulatePlane(std::span<const PlanePosition> points,
                                              std::span<const PlaneSegment> segments,
                                              FillRule rule);

/// Appends the segments of a loop through points, the last of which leads back to the first.
void appendLoop(std::span<const std::uint32_t> loop, bool isHole,
                std::vector<PlaneSegment>& segments);

/// Area of a loop by the shoelace formula; positive when it runs counter-clockwise.
double loopArea(std::span<const PlanePosition> points, std::span<const std::uint32_t> loop);

} // namespace host::geometry
