#include "host/nodes/animation/keptCurve.h"

#include "host/math/units.h"

#include <cmath>

namespace host::nodes {
namespace {

constexpr double kTicks = static_cast<double>(kTicksPerSecond);

double numberIn(const NumericArray* array, std::uint32_t index, double fallback)
{
    return array != nullptr ? array->number(index, 0, fallback) : fallback;
}

geometry::TangentType typeOf(const NumericArray* types, std::uint32_t index, int fallback)
{
    return geometry::tangentTypeFromNumber(
        static_cast<int>(numberIn(types, index, static_cast<double>(fallback))));
}

} // namespace

geometry::CurveKeys curveKeys(const StoredKeys& stored, const CurveMeasure& measure)
{
    geometry::CurveKeys keys;
    keys.isWeighted = stored.isWeighted;
    keys.before = geometry::infinityTypeFromNumber(stored.before);
    keys.after = geometry::infinityTypeFromNumber(stored.after);
    keys.gridPerUnit = measure.isTimed ? 1 : kTicks;
    const double timeScale = measure.isTimed ? kTicks : 1; // of vectors, which are in seconds
    const double valueScale = measure.givesTime ? kTicks : 1;
    keys.levelDifference *= valueScale;
    const NumericArray* pairs = stored.timesAndValues;
    if (pairs == nullptr || pairs->width() != 2) {
        return keys;
    }
    keys.keys.reserve(pairs->elementCount());
    for (const NumericArray::Run& run : pairs->runs()) {
        for (std::uint32_t i = run.first; i < run.first + run.count; ++i) {
            geometry::CurveKey& key = keys.keys.emplace_back();
            const double time = pairs->number(i, 0);
            key.time = measure.isTimed ? std::round(time) : time;
            key.value = pairs->number(i, 1);
            key.inType = typeOf(stored.inTypes, i, stored.tangentType);
            key.outType = typeOf(stored.outTypes, i, stored.tangentType);
            key.in = {numberIn(stored.inX, i, 0) * timeScale,
                      numberIn(stored.inY, i, 0) * valueScale};
            key.out = {numberIn(stored.outX, i, 0) * timeScale,
                       numberIn(stored.outY, i, 0) * valueScale};
        }
    }
    return keys;
}

} // namespace host::nodes
