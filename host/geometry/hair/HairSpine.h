// The centre of a clump: its points with the cross sections that hairs are spread over.
#pragma once

#include "host/geometry/hair/HairStyle.h"

namespace host::geometry {

/// Points that may be put between two points of a guide, and points of a whole spine.
inline constexpr double kMaxSubSegments = 100;
inline constexpr std::size_t kMaxSpinePoints = 65536;

/// A cross section: the place of the centre, two unit vectors at right angles to each other, and
/// what the settings say at this part of the hair.
struct SpinePoint {
    Vec3d position;
    Vec3d along, across;
    double radius = 0;       ///< how far hairs may be from the centre
    double squeeze = 1;      ///< factor of what lies along `across`
    double turn = 0;         ///< radians about the centre
    double displacement = 1; ///< factor of curl and noise
};

struct HairSpine {
    std::vector<SpinePoint> points;
    double length = 0; ///< of the polygon
};

/// The spine of a guide: 2 points or more; empty for a guide that has fewer, or numbers that are
/// not finite.
///
/// Points      those of the guide and `subSegments` more between each two, on cubic Hermite curves
///             with half the way between the neighbours as slope.
/// Sections    at right angles to an axis that goes from the surface normal at the root
///             (bendFollow 0) to the direction of the hair (1). They start out along the surface's
///             tangent and turn about the axis no more than they must.
HairSpine makeSpine(const HairGuide& guide, const HairStyle& style);

/// The number of points that the spine of a sound guide has.
std::size_t spineSize(const HairGuide& guide, const HairStyle& style);

/// True where a spine has fewer points than subSegments, or the follicle's curve, would give.
bool isSpineLimited(const HairGuide& guide, const HairStyle& style);

} // namespace host::geometry
