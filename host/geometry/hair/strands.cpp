#include "host/geometry/hair/strands.h"

#include "host/geometry/hair/HairSpine.h"
#include "host/geometry/hair/hairColor.h"
#include "host/geometry/hair/hairRandom.h"
#include "host/math/angle.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace host::geometry {
namespace {

using std::numbers::pi;

void makeFinite(double& number, double fallback)
{
    number = std::isfinite(number) ? number : fallback;
}

/// The settings with defaults for what is no number.
HairStyle cleaned(HairStyle style)
{
    const HairStyle defaults;
    for (double HairStyle::*setting :
         {&HairStyle::hairsPerClump, &HairStyle::baldness, &HairStyle::thinning,
          &HairStyle::hairWidth, &HairStyle::diffuseRandom, &HairStyle::hueRandom,
          &HairStyle::saturationRandom, &HairStyle::brightnessRandom, &HairStyle::curl,
          &HairStyle::curlFrequency, &HairStyle::noise, &HairStyle::noiseFrequency}) {
        makeFinite(style.*setting, defaults.*setting);
    }
    return style;
}

double hairsOf(const HairStyle& style, const HairGuide& guide)
{
    const double wanted =
        std::floor(style.hairsPerClump * guide.densityFactor * style.baldness + 0.5);
    return wanted > 0 ? std::min(wanted, 1e18) : 0;
}

/// The section at a place between points of the spine; exactly that of a point where it hits one.
SpinePoint sectionAt(const HairSpine& spine, double place)
{
    const auto low = std::min(static_cast<std::size_t>(place), spine.points.size() - 1);
    const double part = place - static_cast<double>(low);
    if (!(part > 0) || low + 1 == spine.points.size()) {
        return spine.points[low];
    }
    const SpinePoint& a = spine.points[low];
    const SpinePoint& b = spine.points[low + 1];
    const auto mixed = [part](const auto& x, const auto& y) { return x * (1 - part) + y * part; };
    return {mixed(a.position, b.position),         normalized(mixed(a.along, b.along)),
            normalized(mixed(a.across, b.across)), mixed(a.radius, b.radius),
            mixed(a.squeeze, b.squeeze),           mixed(a.turn, b.turn),
            mixed(a.displacement, b.displacement)};
}

/// Random numbers from -1 to 1 at whole places, and smooth in between.
double smoothNoise(const HairNumber& hair, HairPurpose purpose, double place)
{
    constexpr double kFarthest = 1e15;
    if (!(std::fabs(place) < kFarthest)) {
        return 0;
    }
    const double low = std::floor(place);
    const auto step = static_cast<std::uint64_t>(static_cast<std::int64_t>(low));
    const double t = place - low;
    const double first = 2 * hairRandom(hair, purpose, step) - 1;
    const double second = 2 * hairRandom(hair, purpose, step + 1) - 1;
    return first + (second - first) * (t * t * (3 - 2 * t));
}

/// Grows the hairs of one clump.
class Clump {
public:
    Clump(const HairStyle& style, const HairGuide& guide, const HairSpine& spine)
        : m_style(style), m_guide(guide), m_spine(spine)
    {
        const std::size_t count = spine.points.size();
        m_widths.reserve(count);
        m_colorFactors.reserve(count);
        for (std::size_t i = 0; i < count; ++i) {
            const double t = shareOf(i);
            m_widths.push_back(style.hairWidth * style.hairWidthScale.at(t, 1));
            m_colorFactors.push_back(style.colorScale.at(t, {1, 1, 1}));
        }
        m_curl = style.curl * guide.curlFactor * style.hairWidth;
        m_noise = style.noise * style.hairWidth;
    }

    /// Whether its hairs depend on random numbers.
    bool isRandom() const
    {
        return m_style.thinning > 0 || isColorRandom(m_style) || m_curl != 0 || m_noise != 0 ||
               std::any_of(m_spine.points.begin(), m_spine.points.end(),
                           [](const SpinePoint& point) { return point.radius != 0; });
    }

    RenderLine grow(std::uint32_t number) const
    {
        const HairNumber hair{m_style.seed, m_guide.number, number};
        const double angle = 2 * pi * hairRandom(hair, HairPurpose::PlaceAngle);
        const double distance = std::sqrt(hairRandom(hair, HairPurpose::PlaceRadius));
        const double reach = reachOf(hair);
        const double phase = 2 * pi * hairRandom(hair, HairPurpose::CurlPhase);
        const Vec3d color = hairColor(m_style, m_guide, hair);
        double turn = 0;
        SineCosine place;
        RenderLine line;
        line.widths = m_widths;
        line.points.reserve(m_widths.size());
        line.colors.reserve(m_widths.size());
        for (std::size_t i = 0; i < m_widths.size(); ++i) {
            const SpinePoint section = sectionAt(m_spine, static_cast<double>(i) * reach);
            if (i == 0 || section.turn != turn) {
                turn = section.turn;
                place = sineCosine(angle + turn);
            }
            double along = section.radius * distance * place.cosine;
            double across = section.radius * distance * place.sine * section.squeeze;
            addDisplacement(hair, shareOf(i) * reach, phase, section.displacement, along, across);
            line.points.push_back(section.position + section.along * along +
                                  section.across * across);
            const Vec3d& factor = m_colorFactors[i];
            line.colors.push_back({color.x * factor.x, color.y * factor.y, color.z * factor.z});
        }
        return line;
    }

private:
    double shareOf(std::size_t i) const
    {
        return static_cast<double>(i) / static_cast<double>(m_spine.points.size() - 1);
    }

    /// The share of the spine that a hair goes along.
    double reachOf(const HairNumber& hair) const
    {
        const bool isShort = hairRandom(hair, HairPurpose::IsShort) < m_style.thinning;
        return isShort ? hairRandom(hair, HairPurpose::Length) : 1;
    }

    void addDisplacement(const HairNumber& hair, double share, double phase, double factor,
                         double& along, double& across) const
    {
        if (m_curl != 0) {
            const SineCosine turn = sineCosine(2 * pi * m_style.curlFrequency * share + phase);
            along += m_curl * factor * turn.cosine;
            across += m_curl * factor * turn.sine;
        }
        if (m_noise != 0) {
            const double place = m_style.noiseFrequency * share * m_spine.length;
            along += m_noise * factor * smoothNoise(hair, HairPurpose::NoiseAlong, place);
            across += m_noise * factor * smoothNoise(hair, HairPurpose::NoiseAcross, place);
        }
    }

    const HairStyle& m_style;
    const HairGuide& m_guide;
    const HairSpine& m_spine;
    std::vector<double> m_widths;
    std::vector<Vec3d> m_colorFactors;
    double m_curl = 0, m_noise = 0;
};

bool isFinite(const Vec3d& vector)
{
    return std::isfinite(vector.x) && std::isfinite(vector.y) && std::isfinite(vector.z);
}

bool isFinite(const RenderLine& line)
{
    return std::all_of(line.points.begin(), line.points.end(),
                       [](const Vec3d& point) { return isFinite(point); }) &&
           std::all_of(line.colors.begin(), line.colors.end(),
                       [](const Vec3d& color) { return isFinite(color); }) &&
           std::all_of(line.widths.begin(), line.widths.end(),
                       [](double width) { return std::isfinite(width); });
}

} // namespace

Strands makeStrands(const HairStyle& style, std::span<const HairGuide> guides,
                    std::size_t maxPoints)
{
    const HairStyle clean = cleaned(style);
    double wanted = 0;
    for (const HairGuide& guide : guides) {
        wanted += hairsOf(clean, guide) * static_cast<double>(spineSize(guide, clean));
    }
    Strands strands;
    const double share = std::min(1.0, static_cast<double>(maxPoints) / wanted);
    strands.isLimited = share < 1;
    std::size_t left = maxPoints;
    for (const HairGuide& guide : guides) {
        const double hairs = hairsOf(clean, guide);
        if (hairs == 0 || spineSize(guide, clean) > left) {
            continue;
        }
        const HairSpine spine = makeSpine(guide, clean);
        if (spine.points.empty()) {
            continue;
        }
        const double fitting = std::max(1.0, std::floor(hairs * share));
        const double granted = std::min(fitting, static_cast<double>(kMaxHairsPerClump));
        strands.isClumpLimited = strands.isClumpLimited || granted < fitting;
        strands.isHairLimited = strands.isHairLimited || isSpineLimited(guide, clean);
        const Clump clump(clean, guide, spine);
        strands.isRandom = strands.isRandom || clump.isRandom();
        for (std::uint32_t hair = 0; hair < granted && left >= spine.points.size(); ++hair) {
            left -= spine.points.size();
            RenderLine line = clump.grow(hair);
            if (isFinite(line)) {
                strands.lines.main.push_back(std::move(line));
            }
        }
    }
    return strands;
}

} // namespace host::geometry
