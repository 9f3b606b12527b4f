// The strands of a hair system.
#pragma once

#include "host/geometry/hair/HairStyle.h"
#include "host/geometry/hair/RenderLines.h"

#include <span>

namespace host::geometry {

/// Points of all strands together; clumps get fewer hairs where there would be more.
inline constexpr std::size_t kMaxStrandPoints = 4000000;

/// Hairs of one clump.
inline constexpr std::size_t kMaxHairsPerClump = 100000;

struct Strands {
    RenderLines lines;      ///< main lines: guide after guide, the hairs of each by their number
    bool isRandom = false;  ///< random numbers took part
    bool isLimited = false; ///< clumps have fewer hairs, for the points of all strands
    bool isClumpLimited = false; ///< a clump has kMaxHairsPerClump and would have more
    bool isHairLimited = false;  ///< hairs have fewer points than their settings say
};

/// Strands round guides, in the space of the guides.
///
/// Number     hairsPerClump * densityFactor * baldness, rounded.
/// Place      at every point of the spine (see HairSpine.h) the hair keeps its share of the
///            section's disc: radius * sqrt(r) at the angle 2 pi r' with two random numbers, turned
///            and squeezed as the section says. No hair is farther from the spine than the radius;
///            with radius 0 it is the spine.
/// Length     of the share `thinning` of the hairs a random part of the whole.
/// Width      hairWidth * hairWidthScale over the hair's own length.
/// Colour     blended with the follicle's, hue, saturation and brightness shifted by up to half of
///            their random settings, darkened by up to diffuseRandom, times colorScale.
/// Curl       a circle of radius curl * hairWidth * displacement, curlFrequency turns to the tip.
/// Noise      smooth random numbers of that size, noiseFrequency of them per centimetre.
/// Limits     at most `maxPoints` points in all: clumps get fewer hairs, at least one each.
/// Left out   guides and strands with numbers that are not finite.
///
/// The manual gives what these settings mean in words; the formulas are this system's own.
Strands makeStrands(const HairStyle& style, std::span<const HairGuide> guides,
                    std::size_t maxPoints = kMaxStrandPoints);

} // namespace host::geometry
