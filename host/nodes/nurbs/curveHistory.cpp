// Nodes that make a curve of a curve: attachCurve, detachCurve, rebuildCurve, insertKnotCurve,
// reverseCurve, subCurve, closeCurve, offsetCurve, and the conversions between Bezier and NURBS
// curves.
#include "host/nodes/nurbs/knotInputs.h"
#include "host/nodes/nurbs/nurbsTypes.h"
#include "host/nodes/nurbs/splineInputs.h"

#include "host/geometry/curve/interpolation.h"
#include "host/geometry/curve/knotAlgebra.h"
#include "host/geometry/curve/rebuild.h"

#include <array>

namespace host::nodes {
namespace {

using geometry::CurveData;
using geometry::SplineRows;

constexpr std::array<std::string_view, 1> kOutputs{"outputCurve"};

Value curveFrom(const SplineRows& rows, const CurveData& like)
{
    return rows.points.empty() ? Value()
                               : Value::of(geometry::curveOf(rows, like.rational, like.dimension));
}

constexpr std::array<std::string_view, 8> kAttachInputs{
    "inputCurve1", "inputCurve2", "reverse1",    "reverse2",
    "method",      "blendBias",   "inputCurves", "keepMultipleKnots"};

std::vector<SharedCurve> curvesToAttach(ComputeContext& context)
{
    std::vector<SharedCurve> curves{curveInput(context, 0), curveInput(context, 1)};
    for (const std::int32_t index : context.elementIndices(6)) {
        curves.push_back(context.element(6, index).data<CurveData>());
    }
    std::erase(curves, nullptr);
    return curves;
}

Expected<Value> computeAttach(ComputeContext& context)
{
    const std::vector<SharedCurve> curves = curvesToAttach(context);
    geometry::AttachOptions options;
    options.reversesFirst = flagInput(context, 2, false);
    options.reversesSecond = flagInput(context, 3, false);
    options.blends = context.number(4, 0) == 1;
    options.blendBias = context.number(5, 0.5);
    const bool keepsKnots = flagInput(context, 7, true);
    if (!context.isComplete() || curves.empty()) {
        return Value();
    }
    if (options.blends || !keepsKnots) {
        context.noteUncomputed(); // joined, not blended; the multiple knot stays
    }
    SplineRows joined = geometry::rowsOf(*curves.front());
    bool isRational = curves.front()->rational;
    for (std::size_t i = 1; i < curves.size(); ++i) {
        SplineRows longer = geometry::attached(joined, geometry::rowsOf(*curves[i]), options);
        if (longer.points.empty() && !joined.points.empty()) {
            context.noteUncomputed(); // those before alone
            break;
        }
        joined = std::move(longer);
        options.reversesFirst = false;
        isRational = isRational || curves[i]->rational;
    }
    return joined.points.empty() ? Value() : curveValue(geometry::curveOf(joined, isRational));
}

constexpr std::array<std::string_view, 2> kDetachInputs{"inputCurve", "parameter"};

Expected<Value> computeDetach(ComputeContext& context)
{
    const SharedCurve curve = curveInput(context, 0);
    const std::vector<double> parameters = numbersInput(context, 1);
    if (!context.isComplete() || curve == nullptr) {
        return Value();
    }
    const auto position = static_cast<std::size_t>(std::max(0, context.index()));
    return curveFrom(geometry::piece(geometry::rowsOf(*curve), parameters, position), *curve);
}

constexpr std::array<std::string_view, 7> kRebuildInputs{
    "inputCurve", "matchCurve", "rebuildType", "spans", "degree", "keepRange", "keepControlPoints"};

Expected<Value> computeRebuild(ComputeContext& context)
{
    const SharedCurve curve = curveInput(context, 0);
    const SharedCurve model = curveInput(context, 1);
    RebuildChoice choice = readRebuild(context, 2);
    if (!context.isComplete() || curve == nullptr) {
        return Value();
    }
    SplineRows rows = geometry::rowsOf(*curve);
    if (rows.points.empty()) {
        return Value(curve);
    }
    choice.isSurface = false;
    const SplineRows pattern = model != nullptr ? geometry::rowsOf(*model) : SplineRows();
    if (!rebuild(rows, choice, pattern)) {
        context.noteUncomputed();
    }
    return curveFrom(rows, *curve);
}

constexpr std::array<std::string_view, 5> kInsertInputs{"inputCurve", "parameter", "numberOfKnots",
                                                        "addKnots", "insertBetween"};

Expected<Value> computeInsert(ComputeContext& context)
{
    const SharedCurve curve = curveInput(context, 0);
    const KnotInsertion insertion = readInsertion(context, 1);
    if (!context.isComplete() || curve == nullptr) {
        return Value();
    }
    SplineRows rows = geometry::rowsOf(*curve);
    if (!rows.points.empty() && !insert(rows, insertion)) {
        context.noteUncomputed();
    }
    return curveFrom(rows, *curve);
}

constexpr std::array<std::string_view, 1> kReverseInputs{"inputCurve"};

Expected<Value> computeReverse(ComputeContext& context)
{
    const SharedCurve curve = curveInput(context, 0);
    if (!context.isComplete() || curve == nullptr) {
        return Value();
    }
    SplineRows rows = geometry::rowsOf(*curve);
    geometry::reverse(rows);
    return curveFrom(rows, *curve);
}

constexpr std::array<std::string_view, 4> kSubInputs{"inputCurve", "minValue", "maxValue",
                                                     "relative"};

Expected<Value> computeSub(ComputeContext& context)
{
    const SharedCurve curve = curveInput(context, 0);
    const double low = context.number(1, 0);
    const double high = context.number(2, -1);
    const bool isRelative = flagInput(context, 3, false);
    if (!context.isComplete() || curve == nullptr) {
        return Value();
    }
    return curveFrom(partInRange(geometry::rowsOf(*curve), low, high, isRelative), *curve);
}

constexpr std::array<std::string_view, 3> kCloseInputs{"inputCurve", "preserveShape", "blendBias"};

/// Preserving the shape closes the gap with a straight piece; else the ends meet half way.
Expected<Value> computeClose(ComputeContext& context)
{
    const SharedCurve curve = curveInput(context, 0);
    const double preserves = context.number(1, 1);
    const double bias = context.number(2, 0.5);
    if (!context.isComplete() || curve == nullptr) {
        return Value();
    }
    const SplineRows rows = geometry::rowsOf(*curve);
    if (rows.points.empty() || geometry::isClosed(rows)) {
        return curveFrom(geometry::closedUp(rows, 0.5), *curve);
    }
    context.noteUncomputed(); // closed as near as the ends allow, not as Maya smooths it
    return curveFrom(preserves == 1 ? geometry::closedByLine(rows) : geometry::closedUp(rows, bias),
                     *curve);
}

constexpr std::array<std::string_view, 5> kOffsetInputs{"inputCurve", "distance", "normalX",
                                                        "normalY", "normalZ"};

Expected<Value> computeOffset(ComputeContext& context)
{
    const SharedCurve curve = curveInput(context, 0);
    const double distance = context.number(1, 1);
    const Vec3d normal = vectorInput(context, 2, {0, 1, 0});
    if (!context.isComplete() || curve == nullptr || context.index() > 0) {
        return Value();
    }
    context.noteUncomputed(); // near the true offset, one curve without cut loops
    const SplineRows moved = geometry::offset(geometry::rowsOf(*curve), normal, distance);
    return moved.points.empty() ? Value() : curveValue(geometry::curveOf(moved, false));
}

Expected<Value> computeToBezier(ComputeContext& context)
{
    const SharedCurve curve = curveInput(context, 0);
    if (!context.isComplete() || curve == nullptr) {
        return Value();
    }
    return curveFrom(geometry::inBezierPieces(geometry::elevated(geometry::rowsOf(*curve), 3)),
                     *curve);
}

Expected<Value> passCurve(ComputeContext& context)
{
    return context.input(0);
}

} // namespace

constinit const NodeCompute kAttachCurve{
    .type = "attachCurve", .inputs = kAttachInputs, .outputs = kOutputs, .compute = computeAttach};
constinit const NodeCompute kDetachCurve{
    .type = "detachCurve", .inputs = kDetachInputs, .outputs = kOutputs, .compute = computeDetach};
constinit const NodeCompute kRebuildCurve{.type = "rebuildCurve",
                                          .inputs = kRebuildInputs,
                                          .outputs = kOutputs,
                                          .compute = computeRebuild};
constinit const NodeCompute kInsertKnotCurve{.type = "insertKnotCurve",
                                             .inputs = kInsertInputs,
                                             .outputs = kOutputs,
                                             .compute = computeInsert};
constinit const NodeCompute kReverseCurve{.type = "reverseCurve",
                                          .inputs = kReverseInputs,
                                          .outputs = kOutputs,
                                          .compute = computeReverse};
constinit const NodeCompute kSubCurve{
    .type = "subCurve", .inputs = kSubInputs, .outputs = kOutputs, .compute = computeSub};
constinit const NodeCompute kCloseCurve{
    .type = "closeCurve", .inputs = kCloseInputs, .outputs = kOutputs, .compute = computeClose};
constinit const NodeCompute kOffsetCurve{
    .type = "offsetCurve", .inputs = kOffsetInputs, .outputs = kOutputs, .compute = computeOffset};
constinit const NodeCompute kNurbsCurveToBezier{.type = "nurbsCurveToBezier",
                                                .inputs = kReverseInputs,
                                                .outputs = kOutputs,
                                                .compute = computeToBezier};
constinit const NodeCompute kBezierCurveToNurbs{.type = "bezierCurveToNurbs",
                                                .inputs = kReverseInputs,
                                                .outputs = kOutputs,
                                                .compute = passCurve};

} // namespace host::nodes
