// Ramps: values at positions, blended in between.
#pragma once

#include "host/math/Vec.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace host::geometry {

/// How the values of an entry and the next one are blended; the numbers are those of the attributes
/// "..._Interp".
enum class RampBlend : std::uint8_t {
    None = 0,   ///< the entry's value up to the next one
    Linear = 1, ///< in a straight line
    Smooth = 2, ///< level at both entries: 3 t^2 - 2 t^3
    Spline = 3  ///< a Catmull-Rom spline through the neighbours, the end values counted twice
};

/// The blend of an attribute's number; anything unknown is Linear.
inline RampBlend rampBlendFromNumber(double number)
{
    return number >= 0 && number < 4 ? static_cast<RampBlend>(static_cast<int>(number))
                                     : RampBlend::Linear;
}

template<class T>
struct RampEntry {
    double position = 0;
    T value{};
    RampBlend blend = RampBlend::Linear;
};

/// A ramp of numbers or colours (T has + - and * by a double).
///
/// The segment between two entries blends as the first of them says. Outside the entries the first
/// or last value holds. Which curves "smooth" and "spline" are is not published: these are the
/// usual ones that fit their description.
template<class T>
class Ramp {
public:
    Ramp() = default;
    /// In any order; of entries at one position the last counts above it. Positions that are no
    /// numbers are left out.
    explicit Ramp(std::vector<RampEntry<T>> entries) : m_entries(std::move(entries))
    {
        std::erase_if(m_entries,
                      [](const RampEntry<T>& entry) { return !std::isfinite(entry.position); });
        std::stable_sort(
            m_entries.begin(), m_entries.end(),
            [](const RampEntry<T>& a, const RampEntry<T>& b) { return a.position < b.position; });
    }

    bool isEmpty() const { return m_entries.empty(); }

    /// The value at a position; `fallback` where there are no entries.
    T at(double position, const T& fallback) const
    {
        if (m_entries.empty()) {
            return fallback;
        }
        const auto above = std::upper_bound(
            m_entries.begin(), m_entries.end(), position,
            [](double at, const RampEntry<T>& entry) { return at < entry.position; });
        if (above == m_entries.begin() || std::isnan(position)) {
            return m_entries.front().value;
        }
        if (above == m_entries.end()) {
            return m_entries.back().value;
        }
        return blend(static_cast<std::size_t>(above - m_entries.begin()) - 1, position);
    }

private:
    T blend(std::size_t i, double position) const
    {
        const RampEntry<T>& low = m_entries[i];
        const RampEntry<T>& high = m_entries[i + 1];
        const double t = (position - low.position) / (high.position - low.position);
        const T change = high.value - low.value;
        switch (low.blend) {
        case RampBlend::None:
            return low.value;
        case RampBlend::Smooth:
            return low.value + change * (t * t * (3 - 2 * t));
        case RampBlend::Spline: {
            const T slopeLow = (high.value - m_entries[i > 0 ? i - 1 : 0].value) * 0.5;
            const T slopeHigh =
                (m_entries[std::min(i + 2, m_entries.size() - 1)].value - low.value) * 0.5;
            return low.value + change * (t * t * (3 - 2 * t)) + slopeLow * (t * (1 - t) * (1 - t)) -
                   slopeHigh * (t * t * (1 - t));
        }
        case RampBlend::Linear:
            break;
        }
        return low.value + change * t;
    }

    std::vector<RampEntry<T>> m_entries;
};

} // namespace host::geometry
