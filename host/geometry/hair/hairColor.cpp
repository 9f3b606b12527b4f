#include "host/geometry/hair/hairColor.h"

#include <algorithm>
#include <cmath>

namespace host::geometry {
namespace {

/// Hue 0..6, saturation 0..1 and brightness, for colours without negative parts.
struct HueColor {
    double hue = 0, saturation = 0, brightness = 0;
};

HueColor toHue(const Vec3d& color)
{
    const double high = std::max({color.x, color.y, color.z});
    const double range = high - std::min({color.x, color.y, color.z});
    if (!(range > 0)) {
        return {0, 0, high};
    }
    const double hue = high == color.x   ? (color.y - color.z) / range
                       : high == color.y ? 2 + (color.z - color.x) / range
                                         : 4 + (color.x - color.y) / range;
    return {hue, range / high, high};
}

Vec3d fromHue(const HueColor& color)
{
    const auto part = [&](double offset) {
        const double place = color.hue + offset;
        const double k = place - 6 * std::floor(place / 6);
        const double share = std::clamp(std::min(k, 4 - k), 0.0, 1.0);
        return color.brightness * (1 - color.saturation * share);
    };
    return {part(5), part(3), part(1)};
}

double centred(const HairNumber& hair, HairPurpose purpose, double range)
{
    return range == 0 ? 0 : range * (hairRandom(hair, purpose) - 0.5);
}

} // namespace

bool isColorRandom(const HairStyle& style)
{
    return style.diffuseRandom != 0 || style.hueRandom != 0 || style.saturationRandom != 0 ||
           style.brightnessRandom != 0;
}

Vec3d hairColor(const HairStyle& style, const HairGuide& guide, const HairNumber& hair)
{
    const double blend = guide.colorBlend > 0 ? std::min(guide.colorBlend, 1.0) : 0;
    Vec3d color = blend > 0 ? style.color * (1 - blend) + guide.color * blend : style.color;
    if (style.hueRandom != 0 || style.saturationRandom != 0 || style.brightnessRandom != 0) {
        HueColor shifted = toHue(color);
        shifted.hue += 6 * centred(hair, HairPurpose::Hue, style.hueRandom);
        shifted.saturation = std::clamp(
            shifted.saturation + centred(hair, HairPurpose::Saturation, style.saturationRandom),
            0.0, 1.0);
        shifted.brightness =
            std::max(0.0, shifted.brightness +
                              centred(hair, HairPurpose::Brightness, style.brightnessRandom));
        color = fromHue(shifted);
    }
    return style.diffuseRandom != 0
               ? color * (1 - style.diffuseRandom * hairRandom(hair, HairPurpose::Diffuse))
               : color;
}

} // namespace host::geometry
