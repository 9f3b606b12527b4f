// Nodes that make a surface of a surface: attachSurface, detachSurface, rebuildSurface,
// reverseSurface, insertKnotSurface, closeSurface, offsetSurface.
#include "host/nodes/nurbs/knotInputs.h"
#include "host/nodes/nurbs/nurbsTypes.h"
#include "host/nodes/nurbs/splineInputs.h"

#include "host/geometry/curve/knotAlgebra.h"
#include "host/geometry/curve/rebuild.h"
#include "host/geometry/nurbs/surfaceAlgebra.h"

#include <array>

namespace host::nodes {
namespace {

using geometry::SplineRows;
using geometry::SurfaceData;
using geometry::SurfaceDirection;

constexpr std::array<std::string_view, 1> kOutputs{"outputSurface"};

/// Of nodes that count V before U.
SurfaceDirection directionVu(double number)
{
    return number == 0 ? SurfaceDirection::V : SurfaceDirection::U;
}

constexpr std::array<std::string_view, 11> kAttachInputs{
    "inputSurface1", "inputSurface2", "directionU", "reverse1", "reverse2",         "method",
    "blendBias",     "swap1",         "swap2",      "twist",    "keepMultipleKnots"};

SurfaceData swapped(const SurfaceData& surface, bool isSwapped)
{
    return isSwapped ? geometry::reversed(surface, geometry::Reversal::Swap) : surface;
}

std::size_t poleCount(const SurfaceData& surface)
{
    return surface.poles.size() / surface.stride();
}

/// Both surfaces' rows, brought onto common knots in the other direction. None where they do not
/// fit together or would have too many control points.
Value attachedSurfaces(SurfaceData first, SurfaceData second, SurfaceDirection along,
                       const geometry::AttachOptions& options)
{
    if (!geometry::canHold(poleCount(first) + poleCount(second), 1)) {
        return {};
    }
    const SurfaceDirection other =
        along == SurfaceDirection::U ? SurfaceDirection::V : SurfaceDirection::U;
    std::vector<SplineRows> sides{geometry::rowsOf(first, other), geometry::rowsOf(second, other)};
    if (sides[0].points.empty() || sides[1].points.empty()) {
        return {};
    }
    const double start = sides[0].start();
    const double end = sides[0].end();
    if (!geometry::makeCompatible(sides)) {
        return {};
    }
    for (SplineRows& side : sides) {
        geometry::setDomain(side, start, end);
    }
    first.rational = second.rational = first.rational || second.rational;
    first = geometry::surfaceOf(sides[0], first, other);
    second = geometry::surfaceOf(sides[1], second, other);
    const SplineRows joined = geometry::attached(geometry::rowsOf(first, along),
                                                 geometry::rowsOf(second, along), options);
    return joined.points.empty() ? Value()
                                 : surfaceValue(geometry::surfaceOf(joined, first, along));
}

Expected<Value> computeAttach(ComputeContext& context)
{
    const SharedSurface first = surfaceInput(context, 0);
    const SharedSurface second = surfaceInput(context, 1);
    const bool alongU = flagInput(context, 2, true);
    geometry::AttachOptions options;
    options.reversesFirst = flagInput(context, 3, false);
    options.reversesSecond = flagInput(context, 4, false);
    options.blends = context.number(5, 0) == 1;
    options.blendBias = context.number(6, 0.5);
    const bool swaps1 = flagInput(context, 7, false);
    const bool swaps2 = flagInput(context, 8, false);
    const bool twists = flagInput(context, 9, false);
    const bool keepsKnots = flagInput(context, 10, true);
    if (!context.isComplete() || first == nullptr || second == nullptr) {
        const SharedSurface only = first != nullptr ? first : second;
        return only != nullptr ? Value(only) : Value();
    }
    if (options.blends || !keepsKnots) {
        context.noteUncomputed(); // joined, not blended; the multiple knot stays
    }
    const SurfaceDirection along = alongU ? SurfaceDirection::U : SurfaceDirection::V;
    SurfaceData next = swapped(*second, swaps2);
    if (twists) {
        next = geometry::reversed(next, alongU ? geometry::Reversal::V : geometry::Reversal::U);
    }
    Value joined = attachedSurfaces(swapped(*first, swaps1), std::move(next), along, options);
    if (joined.isEmpty()) {
        context.noteUncomputed(); // the first one alone
        return Value(first);
    }
    return joined;
}

constexpr std::array<std::string_view, 3> kDetachInputs{"inputSurface", "parameter", "direction"};

Expected<Value> computeDetach(ComputeContext& context)
{
    const SharedSurface surface = surfaceInput(context, 0);
    const std::vector<double> parameters = numbersInput(context, 1);
    const SurfaceDirection direction = directionVu(context.number(2, 1));
    if (!context.isComplete() || surface == nullptr) {
        return Value();
    }
    const auto position = static_cast<std::size_t>(std::max(0, context.index()));
    const SplineRows part =
        geometry::piece(geometry::rowsOf(*surface, direction), parameters, position);
    return part.points.empty() ? Value()
                               : surfaceValue(geometry::surfaceOf(part, *surface, direction));
}

constexpr std::array<std::string_view, 10> kRebuildInputs{
    "inputSurface", "matchSurface", "direction",         "rebuildType", "spansU",
    "degreeU",      "keepRange",    "keepControlPoints", "spansV",      "degreeV"};

void rebuildDirection(ComputeContext& context, SurfaceData& surface, SurfaceDirection direction,
                      const RebuildChoice& choice, const SharedSurface& model)
{
    SplineRows rows = geometry::rowsOf(surface, direction);
    if (rows.points.empty()) {
        return;
    }
    const SplineRows pattern =
        model != nullptr ? geometry::rowsOf(*model, direction) : SplineRows();
    if (!rebuild(rows, choice, pattern)) {
        context.noteUncomputed();
    }
    surface = geometry::surfaceOf(rows, surface, direction);
}

Expected<Value> computeRebuild(ComputeContext& context)
{
    constexpr double kOnlyU = 0;
    constexpr double kOnlyV = 1;
    const SharedSurface input = surfaceInput(context, 0);
    const SharedSurface model = surfaceInput(context, 1);
    const double direction = context.number(2, 2);
    RebuildChoice choice = readRebuild(context, 3);
    const std::int32_t spansV = countInput(context, 8, 4, geometry::kMaxRebuiltSpans, 0);
    const std::int32_t degreeV = wholeInput(context, 9, 3, 0, 7);
    if (!context.isComplete() || input == nullptr) {
        return Value();
    }
    SurfaceData surface = *input;
    if (direction != kOnlyV) {
        rebuildDirection(context, surface, SurfaceDirection::U, choice, model);
    }
    if (direction != kOnlyU) {
        choice.spans = spansV;
        choice.degree = degreeV;
        rebuildDirection(context, surface, SurfaceDirection::V, choice, model);
    }
    return surfaceValue(std::move(surface));
}

constexpr std::array<std::string_view, 2> kReverseInputs{"inputSurface", "direction"};

Expected<Value> computeReverse(ComputeContext& context)
{
    const SharedSurface surface = surfaceInput(context, 0);
    const std::int32_t choice = wholeInput(context, 1, 0, 0, 3);
    if (!context.isComplete() || surface == nullptr) {
        return Value();
    }
    constexpr std::array kChoices{geometry::Reversal::U, geometry::Reversal::V,
                                  geometry::Reversal::Both, geometry::Reversal::Swap};
    return surfaceValue(geometry::reversed(*surface, kChoices[static_cast<std::size_t>(choice)]));
}

constexpr std::array<std::string_view, 6> kInsertInputs{
    "inputSurface", "parameter", "numberOfKnots", "addKnots", "insertBetween", "direction"};

Expected<Value> computeInsert(ComputeContext& context)
{
    const SharedSurface surface = surfaceInput(context, 0);
    const KnotInsertion insertion = readInsertion(context, 1);
    const SurfaceDirection direction = directionVu(context.number(5, 1));
    if (!context.isComplete() || surface == nullptr) {
        return Value();
    }
    bool isWhole = true;
    SurfaceData finer = geometry::changed(
        *surface, direction, [&](SplineRows& rows) { isWhole = insert(rows, insertion); });
    if (!isWhole) {
        context.noteUncomputed();
    }
    if (!finer.poles.empty()) {
        finer.trims = surface->trims; // the domain is the same
    }
    return surfaceValue(std::move(finer));
}

constexpr std::array<std::string_view, 3> kCloseInputs{"inputSurface", "direction", "blendBias"};

Expected<Value> computeClose(ComputeContext& context)
{
    const SharedSurface surface = surfaceInput(context, 0);
    const double direction = context.number(1, 0);
    const double bias = context.number(2, 0.5);
    if (!context.isComplete() || surface == nullptr) {
        return Value();
    }
    context.noteUncomputed(); // the edges are brought together, not smoothed as Maya does
    const auto close = [&](SplineRows& rows) { rows = geometry::closedUp(rows, bias); };
    SurfaceData closed = *surface;
    if (direction != 1) {
        closed = geometry::changed(closed, SurfaceDirection::U, close);
    }
    if (direction != 0) {
        closed = geometry::changed(closed, SurfaceDirection::V, close);
    }
    return surfaceValue(std::move(closed));
}

constexpr std::array<std::string_view, 2> kOffsetInputs{"inputSurface", "distance"};

Expected<Value> computeOffset(ComputeContext& context)
{
    const SharedSurface surface = surfaceInput(context, 0);
    const double distance = context.number(1, 1);
    if (!context.isComplete() || surface == nullptr) {
        return Value();
    }
    context.noteUncomputed(); // near the true offset, which is no spline
    return surfaceValue(geometry::offset(*surface, distance));
}

} // namespace

constinit const NodeCompute kAttachSurface{.type = "attachSurface",
                                           .inputs = kAttachInputs,
                                           .outputs = kOutputs,
                                           .compute = computeAttach};
constinit const NodeCompute kDetachSurface{.type = "detachSurface",
                                           .inputs = kDetachInputs,
                                           .outputs = kOutputs,
                                           .compute = computeDetach};
constinit const NodeCompute kRebuildSurface{.type = "rebuildSurface",
                                            .inputs = kRebuildInputs,
                                            .outputs = kOutputs,
                                            .compute = computeRebuild};
constinit const NodeCompute kReverseSurface{.type = "reverseSurface",
                                            .inputs = kReverseInputs,
                                            .outputs = kOutputs,
                                            .compute = computeReverse};
constinit const NodeCompute kInsertKnotSurface{.type = "insertKnotSurface",
                                               .inputs = kInsertInputs,
                                               .outputs = kOutputs,
                                               .compute = computeInsert};
constinit const NodeCompute kCloseSurface{
    .type = "closeSurface", .inputs = kCloseInputs, .outputs = kOutputs, .compute = computeClose};
constinit const NodeCompute kOffsetSurface{.type = "offsetSurface",
                                           .inputs = kOffsetInputs,
                                           .outputs = kOutputs,
                                           .compute = computeOffset};

} // namespace host::nodes
