// Random numbers of hairs: the same for the same hair, whatever the machine and the order.
#pragma once

#include <cstdint>

namespace host::geometry {

/// What a number is for; numbers for different purposes have nothing to do with each other.
enum class HairPurpose : std::uint32_t {
    PlaceAngle = 1,
    PlaceRadius,
    IsShort,
    Length,
    Diffuse,
    Hue,
    Saturation,
    Brightness,
    CurlPhase,
    NoiseAlong,
    NoiseAcross
};

/// Which hair is meant.
struct HairNumber {
    std::uint64_t seed = 0;     ///< of the whole shape
    std::uint32_t follicle = 0; ///< index among the system's follicles
    std::uint32_t hair = 0;     ///< within the follicle's clump
};

/// The finalizer of the generator SplitMix64 (G. Steele, D. Lea, C. Flood 2014): integers alone.
inline std::uint64_t scrambled(std::uint64_t bits)
{
    bits += 0x9e3779b97f4a7c15U;
    bits = (bits ^ (bits >> 30)) * 0xbf58476d1ce4e5b9U;
    bits = (bits ^ (bits >> 27)) * 0x94d049bb133111ebU;
    return bits ^ (bits >> 31);
}

/// A number from 0 up to, not including, 1, a multiple of 2^-53; `step` counts along the hair.
inline double hairRandom(const HairNumber& number, HairPurpose purpose, std::uint64_t step = 0)
{
    std::uint64_t bits = scrambled(number.seed);
    bits = scrambled(bits ^ (std::uint64_t{number.follicle} << 32 | number.hair));
    bits = scrambled(bits ^ static_cast<std::uint64_t>(purpose));
    bits = scrambled(bits ^ step);
    return static_cast<double>(bits >> 11) * 0x1p-53;
}

} // namespace host::geometry
