// The keys of an animation curve as they come from a scene.
#pragma once

#include <cstdint>
#include <vector>

namespace host::geometry {

/// How the curve leaves or reaches a key; the numbers are those of keyTanInType and keyTanOutType.
enum class TangentType : std::uint8_t {
    Fixed = 1,     ///< the given vector
    Linear = 2,    ///< towards the neighbour
    Flat = 3,      ///< level
    Step = 5,      ///< the value is held up to the next key
    Slow = 6,      ///< obsolete
    Fast = 7,      ///< obsolete
    Spline = 9,    ///< parallel to the line through both neighbours
    Clamped = 10,  ///< spline, but level beside a neighbour of nearly the same value
    Plateau = 16,  ///< spline without overshoot, level at extremes
    StepNext = 17, ///< the next key's value is taken at once
    Auto = 18,     ///< spline without overshoot, level at extremes and at the ends
    AutoMix = 27,  ///< auto with the slopes of both sides mixed by time
    AutoEase = 28, ///< auto with the slopes of both sides mixed by an eased time
};

/// What the curve does outside its keys; the numbers are those of preInfinity and postInfinity.
enum class InfinityType : std::uint8_t {
    Constant = 0,      ///< the value of the end key
    Linear = 1,        ///< straight on
    Cycle = 3,         ///< again and again
    CycleRelative = 4, ///< again and again, each time from where the last pass ended
    Oscillate = 5,     ///< forwards and backwards
};

/// The type of an attribute's number; an unknown one is a spline.
TangentType tangentTypeFromNumber(int number);
/// The type of an attribute's number; an unknown one is constant.
InfinityType infinityTypeFromNumber(int number);

/// Three times the way from a key to the control point of its side, both taken forwards: x in the
/// curve's unit of time, y in that of its values. Unweighted curves use y / x alone.
struct TangentVector {
    double x = 0;
    double y = 0;
    friend bool operator==(const TangentVector&, const TangentVector&) = default;
};

struct CurveKey {
    double time = 0;
    double value = 0;
    TangentType inType = TangentType::Auto;
    TangentType outType = TangentType::Auto;
    TangentVector in; ///< of fixed tangents only
    TangentVector out;
};

struct CurveKeys {
    std::vector<CurveKey> keys; ///< in any order
    bool isWeighted = false;
    InfinityType before = InfinityType::Constant;
    InfinityType after = InfinityType::Constant;
    /// Times that a cycle leads back among the keys are rounded to whole numbers of 1 /
    /// gridPerUnit; 0: not at all.
    double gridPerUnit = 0;
    /// Neighbours of clamped keys whose values differ by less are level.
    double levelDifference = 0.05;
};

} // namespace host::geometry
