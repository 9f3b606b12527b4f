// What an animation curve node keeps: its keys made ready for evaluation.
#pragma once

#include "host/geometry/animation/AnimationCurve.h"
#include "host/geometry/animation/RotationCurves.h"
#include "host/types/NumericArray.h"

#include <cstddef>
#include <memory>

namespace host::nodes {

/// The keys as they are stored on a curve node. Arrays may be null.
struct StoredKeys {
    const NumericArray* timesAndValues = nullptr; ///< keyTimeValue: ticks or driver units, value
    const NumericArray* inTypes = nullptr;        ///< keyTanInType
    const NumericArray* outTypes = nullptr;
    const NumericArray* inX = nullptr; ///< seconds or driver units
    const NumericArray* inY = nullptr;
    const NumericArray* outX = nullptr;
    const NumericArray* outY = nullptr;
    int tangentType = 4; ///< of keys without a type of their own
    bool isWeighted = true;
    int before = 0;
    int after = 0;
};

/// What the numbers of a kind of curve measure.
struct CurveMeasure {
    bool isTimed = true;    ///< over time, in ticks, else over a number
    bool givesTime = false; ///< values are times, in ticks
};

/// A curve node's keys, ready: times in ticks where it runs over time, values in internal units.
struct KeptCurve {
    geometry::AnimationCurve curve;
    /// With the curves of the two other axes, where the three are interpolated as one rotation.
    std::shared_ptr<const geometry::RotationCurves> rotation;
    std::size_t axis = 0; ///< of the rotation
};

/// Keys for a kernel; at most as many as the node has stored.
geometry::CurveKeys curveKeys(const StoredKeys& stored, const CurveMeasure& measure);

} // namespace host::nodes
