// Units of length, angle and time as scene files name them, and what they are in the host's own
// units.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace host {

/// Ticks of the host's time: integer, 141,120,000 a second, which every whole frame rate up to
/// 48,000 divides.
inline constexpr std::int64_t kTicksPerSecond = 141120000;

struct LinearUnit {
    std::string_view shortName; ///< as queries answer: "cm"
    std::string_view longName;  ///< as files write: "centimeter"
    double centimetres;         ///< length of one unit
};

/// The unit of a short or long name ("cm", "centimeter"); none for an unknown word.
std::optional<LinearUnit> findLinearUnit(std::string_view name);

/// Radians in one unit of a name ("deg", "degree", "rad", "radian", "min", "sec"); none for an
/// unknown word.
std::optional<double> findAngularUnit(std::string_view name);

/// Ticks in one unit of time ("film", "pal", "23.976fps", "90fps", "sec", ...): exact for whole
/// rates, and 24000/1001 and its kin as 1001 * ticks / 24000. None for an unknown word or a rate
/// outside (0, 1e6].
std::optional<double> findTimeUnit(std::string_view name);

} // namespace host
