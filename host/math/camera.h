// The angle of view of a film camera.
#pragma once

#include "host/math/angle.h"

namespace host {

inline constexpr double kMillimetresPerInch = 25.4;

/// Full horizontal angle of view in radians: 2 atan(aperture / (2 focal length)), with the film
/// aperture in inches and the focal length in millimetres. A focal length of zero sees pi.
inline double horizontalFieldOfView(double horizontalApertureInches, double focalLengthMillimetres)
{
    return 2 * angleOf(horizontalApertureInches * kMillimetresPerInch, 2 * focalLengthMillimetres);
}

} // namespace host
