#include "host/api/src/timeUnit.h"

#include "host/math/units.h"
#include "host/session/Session.h"

#include <algorithm>
#include <array>
#include <optional>

namespace host::api {
namespace {

// The name of each unit, by its number; the ticks follow from it.
// clang-format off
constexpr std::array<std::string_view, MTime::kUserDef> kNames{
    "", "hour", "min", "sec", "millisec", "game", "film", "pal", "ntsc", "show", "palf", "ntscf",
    "2fps", "3fps", "4fps", "5fps", "6fps", "8fps", "10fps", "12fps", "16fps", "20fps", "40fps",
    "75fps", "80fps", "100fps", "120fps", "125fps", "150fps", "200fps", "240fps", "250fps",
    "300fps", "375fps", "400fps", "500fps", "600fps", "750fps", "1200fps", "1500fps", "2000fps",
    "3000fps", "6000fps", "23.976fps", "29.97fps", "29.97df", "47.952fps", "59.94fps", "44100fps",
    "48000fps",
};
// clang-format on

std::array<double, MTime::kUserDef> makeTicks()
{
    std::array<double, MTime::kUserDef> ticks{};
    std::transform(kNames.begin(), kNames.end(), ticks.begin(),
                   [](std::string_view name) { return findTimeUnit(name).value_or(0); });
    return ticks;
}

} // namespace

double ticksPerUnit(MTime::Unit unit)
{
    static const std::array<double, MTime::kUserDef> ticks = makeTicks();
    if (unit == MTime::kUserDef) {
        const session::Session* session = session::currentSession();
        return session != nullptr ? static_cast<double>(session->units().ticksPerFrame)
                                  : ticks[MTime::kFilm];
    }
    const auto number = static_cast<std::size_t>(unit);
    return number < ticks.size() ? ticks[number] : 0;
}

std::string_view nameOfTimeUnit(MTime::Unit unit)
{
    const auto number = static_cast<std::size_t>(unit);
    return number < kNames.size() ? kNames[number] : std::string_view();
}

MTime::Unit timeUnitOfName(std::string_view name)
{
    const auto found = std::find(kNames.begin() + 1, kNames.end(), name);
    if (found != kNames.end()) {
        return static_cast<MTime::Unit>(found - kNames.begin());
    }
    // "24fps" and "film" are one unit, and so on.
    const std::optional<double> wanted = findTimeUnit(name);
    for (std::size_t unit = MTime::kGames; wanted && unit < kNames.size(); ++unit) {
        if (ticksPerUnit(static_cast<MTime::Unit>(unit)) == *wanted) {
            return static_cast<MTime::Unit>(unit);
        }
    }
    return MTime::kUserDef;
}

} // namespace host::api
