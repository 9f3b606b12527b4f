// What hairs look like, and the curves that they grow along.
#pragma once

#include "host/geometry/hair/Ramp.h"
#include "host/math/Vec.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace host::geometry {

/// The settings of a hair system. Ramps run from root (0) to tip (1); an empty one leaves the
/// number that it scales as it is, an empty `clumpCurl` means 0.5 and an empty `clumpFlatness` 0.
struct HairStyle {
    double hairsPerClump = 10;
    double baldness = 1; ///< share of the hairs that grow
    double thinning = 0; ///< share of the hairs that are shorter
    double subSegments = 0;

    double clumpWidth = 0.3; ///< farthest from the clump's centre, centimetres
    Ramp<double> clumpWidthScale;
    double clumpTwist = 0;      ///< turns about the centre
    Ramp<double> clumpCurl;     ///< 0.5: no turning along the centre
    Ramp<double> clumpFlatness; ///< 0 round, 1 flat
    double bendFollow = 1;      ///< 1: cross sections follow the hair, 0: they stay as at the root

    double hairWidth = 0.01;
    Ramp<double> hairWidthScale;
    Vec3d color{0.3, 0.25, 0.15};
    Ramp<Vec3d> colorScale;
    double diffuseRandom = 0, hueRandom = 0, saturationRandom = 0, brightnessRandom = 0;

    Ramp<double> displacementScale;
    double curl = 0, curlFrequency = 10;
    double noise = 0, noiseFrequency = 0.4;
    std::uint64_t seed = 0;
};

/// One follicle: the centre of a clump.
struct HairGuide {
    std::vector<Vec3d> points;  ///< root first
    Vec3d normal, tangent;      ///< of the surface at the root; zero where there is none
    bool isAlongNormal = false; ///< segments put in between leave the surface along the normal
    std::uint32_t number = 0;   ///< for the random numbers
    double densityFactor = 1;
    double clumpWidthFactor = 1;
    double clumpTwistOffset = 0;
    double curlFactor = 1;
    double colorBlend = 0; ///< share of `color` in the hair's colour
    Vec3d color;
    std::optional<double> clumpWidth; ///< in place of the system's
    Ramp<double> clumpWidthScale;     ///< likewise, unless empty
};

} // namespace host::geometry
