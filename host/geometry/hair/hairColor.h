// The colours of single hairs.
#pragma once

#include "host/geometry/hair/HairStyle.h"
#include "host/geometry/hair/hairRandom.h"

namespace host::geometry {

/// The colour of a hair before the ramp from root to tip: the system's and the follicle's blended,
/// then shifted at random in hue, saturation and brightness and darkened.
Vec3d hairColor(const HairStyle& style, const HairGuide& guide, const HairNumber& hair);

/// Whether the settings make colours random.
bool isColorRandom(const HairStyle& style);

} // namespace host::geometry
