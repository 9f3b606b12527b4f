// Surfaces through curves: lofts and extrusions.
#pragma once

#include "host/geometry/curve/SplineRows.h"
#include "host/geometry/nurbs/SurfaceData.h"

namespace host::geometry {

struct LoftOptions {
    std::int32_t degree = 3; ///< across the curves: 1 or 3
    std::int32_t sectionSpans = 1;
    bool isUniform = true; ///< curves at 0, 1, 2, ..; else as far apart as their chords are long
    bool isClosed = false;
};

/// The surface through curves, in order: u runs along them, v across. Cubic lofts of three and more
/// curves end with the slope of the parabola through the three curves there, of two they are
/// straight. Curves that cannot be brought onto common knots, or fewer than two, give an empty
/// surface. `sectionSpans` equal spans between neighbours change knots, not the shape.
SurfaceData lofted(std::vector<SplineRows> curves, const LoftOptions& options, bool isRational);

struct ExtrudeOptions {
    bool turns = true; ///< the profile turns with the path (tube), else it keeps its direction
    bool movesToPath = false; ///< the profile is put with its pivot onto the path's start
    Vec3d pivot;
    double rotation = 0; ///< radians about the path from its start to its end
    double scale = 1;    ///< of the profile at the end of the path
};

/// A profile along a path: u runs along the profile, v along the path. A profile that keeps its
/// direction, neither turned nor scaled, gives the exact surface. Else profiles stand at
/// places of the path, turned by frames that do not roll, and a cubic surface goes through them:
/// near the true sweep, exact on straight paths.
SurfaceData extruded(const SplineRows& profile, const SplineRows& path,
                     const ExtrudeOptions& options, bool isRational);

/// Profiles that an extrusion sets per span of its path, and at most in all.
inline constexpr std::size_t kProfilesPerSpan = 4;
inline constexpr std::size_t kMaxProfiles = 2048;

} // namespace host::geometry
