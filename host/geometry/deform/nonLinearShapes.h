// Space bent, twisted, flared, squashed and waved along the y axis of a handle.
#pragma once

#include "host/math/Vec.h"

#include <cstdint>
#include <span>
#include <variant>

namespace host::geometry {

/// The part of the y axis, from <= 0 to >= 0, in which a shape works; points beyond it go along
/// with its ends.
struct AxisRange {
    double low = -1;
    double high = 1;
};

/// Around the origin towards +x where positive, by `curvature` radians a unit.
struct BendShape {
    AxisRange range;
    double curvature = 0;
};

/// About the y axis by angles (radians, from +z to +x) at the ends, evenly in between.
struct TwistShape {
    AxisRange range;
    double startAngle = 0;
    double endAngle = 0;
};

/// x and z scaled by factors at the ends, evenly in between, and bulged by `curve` in the middle.
struct FlareShape {
    AxisRange range;
    double startX = 1, startZ = 1;
    double endX = 1, endZ = 1;
    double curve = 0;
};

/// Moved along x by a sine of y. `dropoff` from -1 to 1 lets it fade towards the middle (below 0)
/// or the ends.
struct SineShape {
    AxisRange range;
    double amplitude = 0;
    double wavelength = 2;
    double dropoff = 0;
    double offset = 0;
};

/// Stretched (factor > 0) or squashed along y; x and z take in what y gives, most at `maxExpandPos`
/// of the range.
struct SquashShape {
    AxisRange range;
    double startSmoothness = 0;
    double endSmoothness = 0;
    double maxExpandPos = 0.5;
    double expand = 1;
    double factor = 0;
};

/// Moved along y by a sine of the distance from the y axis between two radii.
struct WaveShape {
    double minRadius = 0;
    double maxRadius = 1;
    double amplitude = 0;
    double wavelength = 1;
    double dropoff = 0;
    double dropoffPosition = 0;
    double offset = 0;
};

using NonLinearShape =
    std::variant<BendShape, TwistShape, FlareShape, SineShape, SquashShape, WaveShape>;

/// True where the documented sense of the shape's numbers leaves no choice; else what
/// `applyShape` gives is a stand-in of the same kind.
bool isWellKnown(const NonLinearShape& shape);

/// Moves points that are given in the space of the handle. Points without finite results stay.
void applyShape(const NonLinearShape& shape, std::span<Vec3d> points);

} // namespace host::geometry
