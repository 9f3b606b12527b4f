// nurbsSurface: what comes in, else what the file stored, with the stored trim regions and the
// shape's own control points; in local space or in the world's.
#include "host/nodes/nurbs/controlPointTweaks.h"
#include "host/nodes/nurbs/nurbsTypes.h"
#include "host/nodes/nurbs/splineInputs.h"

#include "host/geometry/nurbs/SurfaceEvaluator.h"
#include "host/geometry/nurbs/repeatOverlap.h"
#include "host/geometry/nurbs/transformSpline.h"

namespace host::nodes {
namespace {

using geometry::SurfaceData;

constexpr std::array<std::string_view, 8> kInputs{"create", "cached", "tweak",  "relativeTweak",
                                                  "xValue", "yValue", "zValue", "trimFace"};
constexpr std::array<std::string_view, 6> kOutputs{"local",     "worldSpace", "minValueU",
                                                   "maxValueU", "minValueV",  "maxValueV"};
constexpr std::size_t kWorldSpace = 1;
constexpr std::size_t kFirstBound = 2;
constexpr std::size_t kTrimFace = 7;

std::vector<Shared<geometry::TrimRegion>> storedTrims(ComputeContext& context)
{
    std::vector<Shared<geometry::TrimRegion>> regions;
    for (const std::int32_t index : context.elementIndices(kTrimFace)) {
        auto region = context.element(kTrimFace, index).data<geometry::TrimRegion>();
        if (region != nullptr) {
            regions.push_back(std::move(region));
        }
    }
    return regions;
}

SharedSurface ownSurface(ComputeContext& context)
{
    SharedSurface surface = surfaceInput(context, 0);
    if (surface == nullptr) {
        surface = surfaceInput(context, 1);
    }
    // Regions that come in win over stored ones.
    std::vector<Shared<geometry::TrimRegion>> trims = storedTrims(context);
    if (surface != nullptr && surface->isTrimmed()) {
        trims.clear();
    }
    const ControlPointTweaks tweaks = readTweaks(context, 2);
    if (surface == nullptr || !context.isComplete() || (tweaks.empty() && trims.empty())) {
        return surface;
    }
    auto own = std::make_shared<SurfaceData>(*surface);
    if (!trims.empty()) {
        own->trims = std::move(trims);
    }
    if (!tweaks.empty() && geometry::isValidSurface(*own)) {
        applyTweaks(tweaks, own->stride(), own->poles);
        geometry::repeatOverlap(*own);
    }
    return own;
}

Value bound(const SurfaceData& surface, std::size_t which)
{
    const std::array<double, 4> bounds{surface.startU(), surface.endU(), surface.startV(),
                                       surface.endV()};
    return Value(bounds[which]);
}

Expected<Value> compute(ComputeContext& context)
{
    const bool isWorld = context.output() == kWorldSpace;
    const Matrix4 world = isWorld ? context.parentWorldMatrix() : Matrix4{};
    const SharedSurface surface = ownSurface(context);
    if (surface == nullptr || !context.isComplete()) {
        return Value();
    }
    if (!geometry::isValidSurface(*surface)) {
        return Error{ErrorCode::BadInput, "counts, knots or points of a surface do not fit", {}};
    }
    if (context.output() >= kFirstBound) {
        return bound(*surface, context.output() - kFirstBound);
    }
    return isWorld ? Value::of(geometry::transformed(*surface, world)) : Value(surface);
}

} // namespace

constinit const NodeCompute kNurbsSurface{
    .type = "nurbsSurface", .inputs = kInputs, .outputs = kOutputs, .compute = compute};

} // namespace host::nodes
