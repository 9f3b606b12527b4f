#include "host/geometry/animation/tangents.h"

#include <algorithm>
#include <cmath>

namespace host::geometry {
namespace {

/// A key between its neighbours; gaps are 0 where there is none.
struct Surroundings {
    double gapLeft = 0; ///< in time
    double gapRight = 0;
    double riseLeft = 0; ///< in value
    double riseRight = 0;
    bool hasLeft = false;
    bool hasRight = false;

    bool isInside() const { return hasLeft && hasRight; }
};

double ratio(double rise, double gap)
{
    return gap != 0 ? rise / gap : 0;
}

Surroundings lookAround(std::span<const CurveKey> keys, std::size_t position)
{
    Surroundings around;
    const CurveKey& key = keys[position];
    if (position > 0) {
        around.hasLeft = true;
        around.gapLeft = key.time - keys[position - 1].time;
        around.riseLeft = key.value - keys[position - 1].value;
    }
    if (position + 1 < keys.size()) {
        around.hasRight = true;
        around.gapRight = keys[position + 1].time - key.time;
        around.riseRight = keys[position + 1].value - key.value;
    }
    return around;
}

/// The slope of the line through both neighbours, at an end of the only span.
double splineSlope(const Surroundings& around)
{
    return ratio(around.riseLeft + around.riseRight, around.gapLeft + around.gapRight);
}

double clampedSlope(const Surroundings& around, double levelDifference)
{
    const bool isLevel = (around.hasLeft && std::fabs(around.riseLeft) < levelDifference) ||
                         (around.hasRight && std::fabs(around.riseRight) < levelDifference);
    return isLevel ? 0 : splineSlope(around);
}

/// The part of the way from its left to its right neighbour at which a key stands, eased.
double easedPlace(double place)
{
    const double fromMiddle = place - 0.5;
    return 0.5 + fromMiddle * (1.5 - 2 * fromMiddle * fromMiddle);
}

double autoSlope(const Surroundings& around, TangentType type)
{
    if (!around.isInside()) {
        return 0;
    }
    const double left = ratio(around.riseLeft, around.gapLeft);
    const double right = ratio(around.riseRight, around.gapRight);
    double slope = splineSlope(around);
    if (type == TangentType::AutoMix || type == TangentType::AutoEase) {
        const double place = ratio(around.gapLeft, around.gapLeft + around.gapRight);
        const double part = type == TangentType::AutoEase ? easedPlace(place) : place;
        slope = left * (1 - part) + right * part;
    }
    const bool isExtreme = !((left > 0 && right > 0) || (left < 0 && right < 0));
    if (isExtreme || (slope < 0) != (right < 0)) {
        return 0;
    }
    const double limit = 3 * std::min(std::fabs(left), std::fabs(right));
    return std::clamp(slope, -limit, limit);
}

double slopeOf(const Surroundings& around, TangentType type, bool isIn, double levelDifference)
{
    switch (type) {
    case TangentType::Linear:
        return isIn ? ratio(around.riseLeft, around.gapLeft)
                    : ratio(around.riseRight, around.gapRight);
    case TangentType::Clamped:
        return clampedSlope(around, levelDifference);
    case TangentType::Plateau:
    case TangentType::Auto:
    case TangentType::AutoMix:
    case TangentType::AutoEase:
        return autoSlope(around, type);
    case TangentType::Slow:
    case TangentType::Fast:
    case TangentType::Spline:
        return splineSlope(around);
    case TangentType::Fixed:
    case TangentType::Flat:
    case TangentType::Step:
    case TangentType::StepNext:
        break;
    }
    return 0;
}

TangentVector vectorOf(const Surroundings& around, TangentType type, bool isIn,
                       double levelDifference)
{
    double own = isIn ? around.gapLeft : around.gapRight;
    if (!(isIn ? around.hasLeft : around.hasRight)) {
        own = around.hasLeft || around.hasRight ? around.gapLeft + around.gapRight : 1;
    }
    return {own, own * slopeOf(around, type, isIn, levelDifference)};
}

} // namespace

KeyTangents tangentsOf(std::span<const CurveKey> keys, std::size_t position, double levelDifference)
{
    const CurveKey& key = keys[position];
    const Surroundings around = lookAround(keys, position);
    KeyTangents tangents{key.in, key.out};
    if (key.inType != TangentType::Fixed) {
        tangents.in = vectorOf(around, key.inType, true, levelDifference);
    }
    if (key.outType != TangentType::Fixed) {
        tangents.out = vectorOf(around, key.outType, false, levelDifference);
    }
    return tangents;
}

} // namespace host::geometry
