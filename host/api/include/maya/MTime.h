// A moment or a span of time: a whole number of ticks, and the unit that it is spoken of in.
#pragma once

#include <maya/MStatus.h>
#include <maya/MTypes.h>

#include <iosfwd>

class MTime {
public:
    enum Unit {
        kInvalid = 0,
        kHours = 1,
        kMinutes = 2,
        kSeconds = 3,
        kMilliseconds = 4,
        k15FPS = 5,
        kGames = 5,
        k24FPS = 6,
        kFilm = 6,
        k25FPS = 7,
        kPALFrame = 7,
        k30FPS = 8,
        kNTSCFrame = 8,
        k48FPS = 9,
        kShowScan = 9,
        k50FPS = 10,
        kPALField = 10,
        k60FPS = 11,
        kNTSCField = 11,
        k2FPS = 12,
        k3FPS = 13,
        k4FPS = 14,
        k5FPS = 15,
        k6FPS = 16,
        k8FPS = 17,
        k10FPS = 18,
        k12FPS = 19,
        k16FPS = 20,
        k20FPS = 21,
        k40FPS = 22,
        k75FPS = 23,
        k80FPS = 24,
        k100FPS = 25,
        k120FPS = 26,
        k125FPS = 27,
        k150FPS = 28,
        k200FPS = 29,
        k240FPS = 30,
        k250FPS = 31,
        k300FPS = 32,
        k375FPS = 33,
        k400FPS = 34,
        k500FPS = 35,
        k600FPS = 36,
        k750FPS = 37,
        k1200FPS = 38,
        k1500FPS = 39,
        k2000FPS = 40,
        k3000FPS = 41,
        k6000FPS = 42,
        k23_976FPS = 43,
        k29_97FPS = 44,
        k29_97DF = 45,
        k47_952FPS = 46,
        k59_94FPS = 47,
        k44100FPS = 48,
        k48000FPS = 49,
        kUserDef = 50, ///< the rate of the open scene
        kLast = 51
    };
    using MTick = MInt64;

    MTime() = default;
    /// Rounds to the nearest tick; a time beyond the range of ticks is the last one in it.
    MTime(double value, Unit unit = kFilm);

    Unit unit() const { return m_unit; }
    double value() const { return as(m_unit); }
    /// The time in another unit; 0 in a unit that measures nothing.
    double as(Unit unit) const;
    double asUnits(Unit unit) const { return as(unit); }
    /// Keeps the number, and so changes the moment.
    MStatus setUnit(Unit unit);
    MStatus setValue(double value);

    /// The open scene's working unit; film before a scene is open.
    static Unit uiUnit();
    /// Makes another unit the open scene's; fails for what is no unit and without a scene.
    static MStatus setUIUnit(Unit unit);
    static MTick ticksPerSecond();

    /// Numbers count in this time's own unit; results keep the left one's.
    MTime operator+(const MTime& other) const;
    MTime operator-(const MTime& other) const;
    MTime operator+(double value) const;
    MTime operator-(double value) const;
    MTime& operator+=(const MTime& other);
    MTime& operator-=(const MTime& other);
    MTime& operator+=(double value);
    MTime& operator-=(double value);
    MTime operator*(double factor) const;
    MTime operator/(double divisor) const;
    /// One unit on, one unit back.
    MTime& operator++();
    MTime operator++(int);
    MTime& operator--();
    MTime operator--(int);

    /// By moment, whatever the units.
    bool operator==(const MTime& other) const { return m_ticks == other.m_ticks; }
    bool operator<(const MTime& other) const { return m_ticks < other.m_ticks; }
    bool operator>(const MTime& other) const { return m_ticks > other.m_ticks; }
    bool operator<=(const MTime& other) const { return m_ticks <= other.m_ticks; }
    bool operator>=(const MTime& other) const { return m_ticks >= other.m_ticks; }

private:
    friend struct host::api::Inside;
    MTick m_ticks = 0;
    Unit m_unit = kFilm;
};

/// The number in the time's own unit.
std::ostream& operator<<(std::ostream& stream, const MTime& time);
