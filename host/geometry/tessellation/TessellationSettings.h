// How finely a surface is cut into triangles.
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <numbers>

namespace host::geometry {

/// Where the lines of one direction are placed to begin with.
enum class LineMode : std::uint8_t {
    ByTolerance,        ///< as the tolerances ask
    PerSurfaceByLength, ///< `number` pieces over the surface, of equal length
    PerSurface,         ///< `number` pieces over the surface, of equal parameter range
    PerSpan             ///< `number` pieces in each span
};

struct LineSettings {
    LineMode mode = LineMode::ByTolerance;
    std::int32_t number = 3;
};

inline constexpr double kNoTolerance = std::numeric_limits<double>::infinity();
inline constexpr std::int32_t kMaxSegmentsPerSpan = 128;
inline constexpr std::size_t kMaxSurfaceTriangles = std::size_t{1} << 22;

/// Lines are refined until every tolerance holds; kNoTolerance leaves one out.
struct TessellationSettings {
    LineSettings u, v;
    /// Largest distance of a chord from the surface, in diagonals of the surface's box.
    double chordTolerance = 0.003;
    /// The same in centimetres.
    double chordHeight = kNoTolerance;
    /// Largest turn of the surface from one end of a segment to the other, in radians.
    double angleTolerance = 15 * std::numbers::pi / 180;
    /// The same along the boundaries of trim regions, whose outline shows most.
    double edgeAngleTolerance = 6 * std::numbers::pi / 180;
    /// Least number of segments in a span that turns visibly.
    std::int32_t curvedSpanSegments = 4;
    /// Cuts each quad along its shorter diagonal.
    bool swapsEdges = false;
    /// Turns normals and triangles over.
    bool isOpposite = false;
    std::size_t maxTriangles = kMaxSurfaceTriangles;
};

} // namespace host::geometry
