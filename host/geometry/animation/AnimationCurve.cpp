#include "host/geometry/animation/AnimationCurve.h"

#include "host/geometry/animation/WeightedSpan.h"
#include "host/geometry/animation/tangents.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace host::geometry {
namespace {

double slopeOf(const TangentVector& vector)
{
    return vector.x != 0 ? vector.y / vector.x : 0;
}

TangentVector finite(const TangentVector& vector)
{
    return std::isfinite(vector.x) && std::isfinite(vector.y) ? vector : TangentVector{};
}

/// The keys with all vectors filled in, ascending, without those that no curve can go through.
void settle(CurveKeys& curve)
{
    std::vector<CurveKey>& keys = curve.keys;
    keys.erase(std::remove_if(keys.begin(), keys.end(),
                              [](const CurveKey& key) {
                                  return !std::isfinite(key.time) || !std::isfinite(key.value);
                              }),
               keys.end());
    const auto isEarlier = [](const CurveKey& left, const CurveKey& right) {
        return left.time < right.time;
    };
    if (!std::is_sorted(keys.begin(), keys.end(), isEarlier)) {
        std::stable_sort(keys.begin(), keys.end(), isEarlier);
    }
    for (CurveKey& key : keys) {
        key.in = finite(key.in);
        key.out = finite(key.out);
    }
    for (std::size_t i = 0; i < keys.size(); ++i) {
        const KeyTangents tangents = tangentsOf(keys, i, curve.levelDifference);
        keys[i].in = tangents.in;
        keys[i].out = tangents.out;
    }
}

} // namespace

TangentType tangentTypeFromNumber(int number)
{
    constexpr std::array<TangentType, 13> kTypes{
        TangentType::Fixed,    TangentType::Linear,   TangentType::Flat,   TangentType::Step,
        TangentType::Slow,     TangentType::Fast,     TangentType::Spline, TangentType::Clamped,
        TangentType::Plateau,  TangentType::StepNext, TangentType::Auto,   TangentType::AutoMix,
        TangentType::AutoEase,
    };
    const auto found = std::find_if(kTypes.begin(), kTypes.end(), [&](TangentType type) {
        return static_cast<int>(type) == number;
    });
    return found != kTypes.end() ? *found : TangentType::Spline;
}

InfinityType infinityTypeFromNumber(int number)
{
    const bool isKnown = number == 1 || (number >= 3 && number <= 5);
    return isKnown ? static_cast<InfinityType>(number) : InfinityType::Constant;
}

AnimationCurve::AnimationCurve(CurveKeys keys)
    : m_before(keys.before), m_after(keys.after), m_gridPerUnit(keys.gridPerUnit)
{
    settle(keys);
    if (keys.keys.empty()) {
        return;
    }
    appendSpans(keys);
    m_slopeBefore = slopeOf(keys.keys.front().in);
    m_slopeAfter = slopeOf(keys.keys.back().out);
}

void AnimationCurve::appendSpans(const CurveKeys& curve)
{
    const std::vector<CurveKey>& keys = curve.keys;
    m_spans.reserve(keys.size());
    for (std::size_t i = 0; i + 1 < keys.size(); ++i) {
        m_spans.push_back(spanBetween(keys[i], keys[i + 1], curve.isWeighted));
    }
    Span& last = m_spans.emplace_back();
    last.start = keys.back().time;
    last.value = keys.back().value;
}

AnimationCurve::Span AnimationCurve::spanBetween(const CurveKey& left, const CurveKey& right,
                                                 bool isWeighted)
{
    Span span;
    span.start = left.time;
    span.length = right.time - left.time;
    span.value = left.value;
    const double rise = right.value - left.value;
    if (left.outType == TangentType::Step || !(span.length > 0)) {
        return span;
    }
    span.linear = rise;
    if (left.outType == TangentType::StepNext) {
        span.shape = Shape::Next;
        return span;
    }
    span.shape = Shape::Even;
    if (left.outType == TangentType::Linear && right.inType == TangentType::Linear) {
        return span;
    }
    // Heights of the handles, three times over, for a parameter that goes from 0 to 1.
    double leaving = slopeOf(left.out) * span.length;
    double arriving = slopeOf(right.in) * span.length;
    if (isWeighted) {
        const WeightedSpan time =
            straightened(left.out.x / 3 / span.length, 1 - right.in.x / 3 / span.length);
        leaving = left.out.y * time.firstKept;
        arriving = right.in.y * time.secondKept;
        if (!time.isEven()) {
            span.shape = Shape::Weighted;
            span.first = time.first;
            span.second = time.second;
        }
    }
    span.linear = leaving;
    span.quadratic = 3 * rise - 2 * leaving - arriving;
    span.cubic = leaving + arriving - 2 * rise;
    return span;
}

double AnimationCurve::at(double time) const
{
    std::size_t hint = 0;
    return at(time, hint);
}

double AnimationCurve::at(double time, std::size_t& hint) const
{
    if (m_spans.empty()) {
        return 0;
    }
    const Span& first = m_spans.front();
    const Span& last = m_spans.back();
    if (!(last.start > first.start)) {
        return last.value;
    }
    if (!std::isfinite(time)) {
        return time > 0 ? last.value : first.value;
    }
    if (time < first.start && m_before == InfinityType::Linear) {
        return first.value - (first.start - time) * m_slopeBefore;
    }
    if (time > last.start && m_after == InfinityType::Linear) {
        return last.value + (time - last.start) * m_slopeAfter;
    }
    const Wrapped among = wrapped(time);
    return inside(among.time, hint) + among.gain;
}

AnimationCurve::Wrapped AnimationCurve::wrapped(double time) const
{
    const double begin = firstTime();
    const double end = lastTime();
    const bool isBefore = time < begin;
    const InfinityType type = isBefore ? m_before : m_after;
    if ((!isBefore && !(time > end)) || !(end > begin) || type == InfinityType::Linear) {
        return {time, 0, 0};
    }
    if (type == InfinityType::Constant) {
        return {isBefore ? begin : end, 0, 0};
    }
    const double range = end - begin;
    const double distance = isBefore ? begin - time : time - end;
    double rest = std::fmod(distance, range);
    double passes = std::floor((distance - rest) / range + 0.5);
    if (m_gridPerUnit > 0) {
        rest = std::round(rest * m_gridPerUnit) / m_gridPerUnit;
        if ((range - rest) * m_gridPerUnit < 0.5) { // a seam, but for rounding
            rest = 0;
            passes += 1;
        }
    }
    const bool isMirrored = type == InfinityType::Oscillate && std::fmod(passes, 2) == 0;
    Wrapped result;
    result.time = isBefore != isMirrored ? end - rest : begin + rest;
    if (type == InfinityType::CycleRelative) {
        result.passes = isBefore ? -(passes + 1) : passes + 1;
        result.gain = result.passes * (m_spans.back().value - m_spans.front().value);
    }
    return result;
}

/// The span that a time among the keys belongs to.
std::size_t AnimationCurve::find(double time, std::size_t hint) const
{
    const auto fits = [&](std::size_t span) {
        return span + 1 < m_spans.size() && m_spans[span].start <= time &&
               time < m_spans[span + 1].start;
    };
    if (fits(hint)) {
        return hint;
    }
    if (fits(hint + 1)) {
        return hint + 1;
    }
    const auto after =
        std::upper_bound(m_spans.begin(), m_spans.end(), time,
                         [](double moment, const Span& span) { return moment < span.start; });
    return after == m_spans.begin() ? 0 : static_cast<std::size_t>(after - m_spans.begin()) - 1;
}

double AnimationCurve::inside(double time, std::size_t& hint) const
{
    hint = find(time, hint);
    const Span& span = m_spans[hint];
    if (time <= span.start || span.shape == Shape::Held) {
        return span.value;
    }
    if (span.shape == Shape::Next) {
        return span.value + span.linear;
    }
    double s = (time - span.start) / span.length;
    if (span.shape == Shape::Weighted) {
        s = WeightedSpan{span.first, span.second, 1, 1}.parameterAt(std::min(s, 1.0));
    }
    const double value = span.value + s * (span.linear + s * (span.quadratic + s * span.cubic));
    return std::isfinite(value) ? value : span.value;
}

} // namespace host::geometry
