#include <maya/MTime.h>

#include "host/api/src/Inside.h"
#include "host/api/src/timeUnit.h"
#include "host/api/src/toStatus.h"
#include "host/math/units.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <ostream>

using host::api::ticksPerUnit;
using host::session::currentSession;

namespace {

constexpr double kTickRange = 9223372036854774784.0; // the last double below 2^63

std::int64_t toTicks(double ticks)
{
    if (std::isnan(ticks)) {
        return 0;
    }
    return std::llround(std::min(std::max(ticks, -kTickRange), kTickRange));
}

/// a + b, held at the ends of the range.
std::int64_t sum(std::int64_t a, std::int64_t b)
{
    using Limits = std::numeric_limits<std::int64_t>;
    if (b > 0 && a > Limits::max() - b) {
        return Limits::max();
    }
    if (b < 0 && a < Limits::min() - b) {
        return Limits::min();
    }
    return a + b;
}

std::int64_t negated(std::int64_t ticks)
{
    return ticks == std::numeric_limits<std::int64_t>::min()
               ? std::numeric_limits<std::int64_t>::max()
               : -ticks;
}

} // namespace

MTime::MTime(double value, Unit unit) : m_ticks(toTicks(value * ticksPerUnit(unit))), m_unit(unit)
{
}

double MTime::as(Unit unit) const
{
    const double ticks = ticksPerUnit(unit);
    return ticks > 0 ? static_cast<double>(m_ticks) / ticks : 0;
}

MStatus MTime::setUnit(Unit unit)
{
    if (ticksPerUnit(unit) == 0) {
        return host::api::toStatus(host::ErrorCode::InvalidParameter);
    }
    *this = MTime(value(), unit);
    return MStatus();
}

MStatus MTime::setValue(double value)
{
    *this = MTime(value, m_unit);
    return MStatus();
}

MTime::Unit MTime::uiUnit()
{
    const host::session::Session* session = currentSession();
    return session != nullptr ? host::api::timeUnitOfName(session->units().time) : kFilm;
}

MStatus MTime::setUIUnit(Unit unit)
{
    host::session::Session* session = currentSession();
    const std::string_view name = host::api::nameOfTimeUnit(unit);
    if (session == nullptr || name.empty()) {
        return host::api::toStatus(host::ErrorCode::InvalidParameter);
    }
    return host::api::toStatus(session->setTimeUnit(name));
}

MTime::MTick MTime::ticksPerSecond()
{
    return host::kTicksPerSecond;
}

MTime MTime::operator+(const MTime& other) const
{
    return MTime(*this) += other;
}

MTime MTime::operator-(const MTime& other) const
{
    return MTime(*this) -= other;
}

MTime MTime::operator+(double value) const
{
    return MTime(*this) += value;
}

MTime MTime::operator-(double value) const
{
    return MTime(*this) -= value;
}

MTime& MTime::operator+=(const MTime& other)
{
    m_ticks = sum(m_ticks, other.m_ticks);
    return *this;
}

MTime& MTime::operator-=(const MTime& other)
{
    m_ticks = sum(m_ticks, negated(other.m_ticks));
    return *this;
}

MTime& MTime::operator+=(double value)
{
    return *this += MTime(value, m_unit);
}

MTime& MTime::operator-=(double value)
{
    return *this -= MTime(value, m_unit);
}

MTime MTime::operator*(double factor) const
{
    return host::api::Inside::time(toTicks(static_cast<double>(m_ticks) * factor), m_unit);
}

MTime MTime::operator/(double divisor) const
{
    return host::api::Inside::time(toTicks(static_cast<double>(m_ticks) / divisor), m_unit);
}

MTime& MTime::operator++()
{
    return *this += 1.0;
}

MTime MTime::operator++(int)
{
    const MTime before = *this;
    ++*this;
    return before;
}

MTime& MTime::operator--()
{
    return *this -= 1.0;
}

MTime MTime::operator--(int)
{
    const MTime before = *this;
    --*this;
    return before;
}

std::ostream& operator<<(std::ostream& stream, const MTime& time)
{
    return stream << time.value();
}
