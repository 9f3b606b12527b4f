#include "host/math/units.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <numbers>

namespace host {
namespace {

constexpr std::array<LinearUnit, 8> kLinearUnits{{{"mm", "millimeter", 0.1},
                                                  {"cm", "centimeter", 1},
                                                  {"m", "meter", 100},
                                                  {"km", "kilometer", 100000},
                                                  {"in", "inch", 2.54},
                                                  {"ft", "foot", 30.48},
                                                  {"yd", "yard", 91.44},
                                                  {"mi", "mile", 160934.4}}};

struct AngularUnit {
    std::string_view shortName;
    std::string_view longName;
    double radians;
};

constexpr std::array<AngularUnit, 4> kAngularUnits{{{"deg", "degree", std::numbers::pi / 180},
                                                    {"rad", "radian", 1},
                                                    {"min", "minute", std::numbers::pi / 10800},
                                                    {"sec", "second", std::numbers::pi / 648000}}};

/// A unit of time lasts `numerator` / `denominator` seconds.
struct TimeUnit {
    std::string_view name;
    std::int64_t numerator;
    std::int64_t denominator;
};

constexpr std::array<TimeUnit, 16> kTimeUnits{{{"23.976fps", 1001, 24000},
                                               {"29.97df", 1001, 30000},
                                               {"29.97fps", 1001, 30000},
                                               {"47.952fps", 1001, 48000},
                                               {"59.94fps", 1001, 60000},
                                               {"film", 1, 24},
                                               {"game", 1, 15},
                                               {"hour", 3600, 1},
                                               {"millisec", 1, 1000},
                                               {"min", 60, 1},
                                               {"ntsc", 1, 30},
                                               {"ntscf", 1, 60},
                                               {"pal", 1, 25},
                                               {"palf", 1, 50},
                                               {"sec", 1, 1},
                                               {"show", 1, 48}}};

constexpr double kHighestRate = 1e6;

} // namespace

std::optional<LinearUnit> findLinearUnit(std::string_view name)
{
    for (const LinearUnit& unit : kLinearUnits) {
        if (name == unit.shortName || name == unit.longName) {
            return unit;
        }
    }
    return std::nullopt;
}

std::optional<double> findAngularUnit(std::string_view name)
{
    for (const AngularUnit& unit : kAngularUnits) {
        if (name == unit.shortName || name == unit.longName) {
            return unit.radians;
        }
    }
    return std::nullopt;
}

std::optional<double> findTimeUnit(std::string_view name)
{
    const auto found = std::lower_bound(
        kTimeUnits.begin(), kTimeUnits.end(), name,
        [](const TimeUnit& unit, std::string_view word) { return unit.name < word; });
    if (found != kTimeUnits.end() && found->name == name) {
        // One division: whole where the unit is a whole number of ticks.
        return static_cast<double>(kTicksPerSecond * found->numerator) /
               static_cast<double>(found->denominator);
    }
    constexpr std::string_view kSuffix = "fps";
    if (!name.ends_with(kSuffix)) {
        return std::nullopt;
    }
    const char* const end = name.data() + (name.size() - kSuffix.size());
    double rate = 0;
    const auto [stop, error] = std::from_chars(name.data(), end, rate);
    if (error != std::errc() || stop != end || !(rate > 0 && rate <= kHighestRate)) {
        return std::nullopt;
    }
    return static_cast<double>(kTicksPerSecond) / rate;
}

} // namespace host
