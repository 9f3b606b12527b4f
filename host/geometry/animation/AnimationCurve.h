// An animation curve, prepared once and asked for values at any time.
#pragma once

#include "host/geometry/animation/CurveKeys.h"

#include <cstddef>
#include <vector>

namespace host::geometry {

/// A function of time made of keys: between neighbouring keys a cubic polynomial, a Bezier curve in
/// time and value, or a step; outside them what the infinities say. A value costs a search among
/// the keys (a binary one, none where the hint fits); memory is proportional to them.
class AnimationCurve {
public:
    AnimationCurve() = default; ///< 0 everywhere
    /// Keys may come in any order; those that are not finite are left out. Of keys at one time the
    /// last given is the one that the curve leaves from and whose value it has there.
    explicit AnimationCurve(CurveKeys keys);

    bool isEmpty() const { return m_spans.empty(); }
    double firstTime() const { return m_spans.empty() ? 0 : m_spans.front().start; }
    double lastTime() const { return m_spans.empty() ? 0 : m_spans.back().start; }

    /// The value at a time; exactly the key's at the time of a key. 0 without keys, the only key's
    /// value with one. A time that is not finite counts as the end that it lies at (no number: as
    /// the first key's).
    double at(double time) const;
    /// The same; `hint` is where the last value was found and is kept up to date.
    double at(double time, std::size_t& hint) const;

    /// A key's time led back among the keys by an infinity that repeats them, with what the value
    /// gains on the way; any other time as it is.
    struct Wrapped {
        double time = 0;
        double gain = 0;
        double passes = 0; ///< whole ranges that the gain stands for; negative before the keys
    };
    Wrapped wrapped(double time) const;

private:
    enum class Shape : unsigned char { Held, Next, Even, Weighted };
    /// From one key up to the next; the last one has no length.
    struct Span {
        double start = 0;
        double length = 0;
        double value = 0; ///< plus linear s + quadratic s^2 + cubic s^3, where s goes from 0 to 1
        double linear = 0;
        double quadratic = 0;
        double cubic = 0;
        double first = 0; ///< control points in time, of weighted spans
        double second = 0;
        Shape shape = Shape::Held;
    };
    static Span spanBetween(const CurveKey& left, const CurveKey& right, bool isWeighted);
    void appendSpans(const CurveKeys& keys);
    std::size_t find(double time, std::size_t hint) const;
    double inside(double time, std::size_t& hint) const;

    std::vector<Span> m_spans; ///< one per key, ascending
    InfinityType m_before = InfinityType::Constant;
    InfinityType m_after = InfinityType::Constant;
    double m_gridPerUnit = 0;
    double m_slopeBefore = 0; ///< of a straight run into the first key
    double m_slopeAfter = 0;
};

} // namespace host::geometry
