// planarTrimSurface, and trim.
#include "host/nodes/nurbs/nurbsTypes.h"
#include "host/nodes/nurbs/splineInputs.h"

#include "host/geometry/nurbs/planarTrim.h"

#include <array>

namespace host::nodes {
namespace {

constexpr std::array<std::string_view, 1> kOutputs{"outputSurface"};
constexpr std::array<std::string_view, 4> kPlanarInputs{"inputCurve", "degree", "keepOutside",
                                                        "tolerance"};

Expected<Value> computePlanar(ComputeContext& context)
{
    constexpr double kLeastTolerance = 0.001;
    std::vector<geometry::CurveData> curves;
    for (const std::int32_t index : context.elementIndices(0)) {
        if (const auto curve = context.element(0, index).data<geometry::CurveData>()) {
            curves.push_back(*curve);
        }
    }
    geometry::PlanarTrimOptions options;
    options.degree = wholeInput(context, 1, 3, 0, 7);
    options.keepsOutside = flagInput(context, 2, false);
    options.tolerance = std::fmax(context.number(3, 0), kLeastTolerance);
    if (!context.isComplete()) {
        return Value();
    }
    bool isCrossed = false;
    geometry::SurfaceData surface = geometry::planarTrimSurface(curves, options, &isCrossed);
    if (isCrossed || curves.size() > geometry::kMaxTrimCurves) {
        context.noteUncomputed(); // sorted as if they did not cross; some are left out
    }
    return surfaceValue(std::move(surface));
}

constexpr std::array<std::string_view, 1> kTrimInputs{"inputSurface"};

/// The surface as it comes in: the cutting along curves on it is not computed.
Expected<Value> computeTrim(ComputeContext& context)
{
    const Value surface = context.input(0);
    if (context.isComplete()) {
        context.noteUncomputed();
    }
    return surface;
}

} // namespace

constinit const NodeCompute kPlanarTrimSurface{.type = "planarTrimSurface",
                                               .inputs = kPlanarInputs,
                                               .outputs = kOutputs,
                                               .compute = computePlanar};
constinit const NodeCompute kTrim{
    .type = "trim", .inputs = kTrimInputs, .outputs = kOutputs, .compute = computeTrim};

} // namespace host::nodes
