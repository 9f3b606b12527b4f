// Nodes that make surfaces of curves: revolve, loft, extrude.
#include "host/nodes/nurbs/nurbsTypes.h"
#include "host/nodes/nurbs/splineInputs.h"

#include "host/geometry/curve/CurveEvaluator.h"
#include "host/geometry/curve/arcs.h"
#include "host/geometry/curve/knotAlgebra.h"
#include "host/geometry/nurbs/primitives.h"
#include "host/geometry/nurbs/productSurface.h"
#include "host/geometry/nurbs/skin.h"
#include "host/geometry/nurbs/surfaceAlgebra.h"

#include <algorithm>
#include <array>
#include <numbers>

namespace host::nodes {
namespace {

using geometry::SplineRows;
using geometry::SurfaceData;

constexpr double kTurn = 2 * std::numbers::pi;
constexpr std::array<std::string_view, 1> kOutputs{"outputSurface"};

constexpr std::array<std::string_view, 16> kRevolveInputs{"inputCurve",
                                                          "axisX",
                                                          "axisY",
                                                          "axisZ",
                                                          "pivotX",
                                                          "pivotY",
                                                          "pivotZ",
                                                          "startSweep",
                                                          "endSweep",
                                                          "degree",
                                                          "sections",
                                                          "useTolerance",
                                                          "tolerance",
                                                          "computePivotAndAxis",
                                                          "autoCorrectNormal",
                                                          "bridge"};

/// A surface as a value; notes where the limits, or the curves, let none be made.
Value madeSurface(ComputeContext& context, SurfaceData surface)
{
    if (surface.poles.empty()) {
        context.noteUncomputed();
    }
    return surfaceValue(std::move(surface));
}

double farthestFrom(const SplineRows& profile, const Vec3d& pivot)
{
    double radius = 0;
    for (const auto& point : profile.points) {
        radius = std::max(radius, length(point.projected() - pivot));
    }
    return radius;
}

Expected<Value> computeRevolve(ComputeContext& context)
{
    const SharedCurve profile = curveInput(context, 0);
    const Vec3d axis = vectorInput(context, 1, {1, 0, 0});
    const Vec3d pivot = vectorInput(context, 4, {});
    const double start = context.number(7, 0);
    const double end = context.number(8, kTurn);
    const std::int32_t degree = wholeInput(context, 9, 3, 0, 7);
    std::int32_t sections = countInput(context, 10, 8, geometry::kMaxPatches);
    const bool usesTolerance = flagInput(context, 11, false);
    const double tolerance = context.number(12, 0.01);
    const bool findsAxis = context.number(13, 0) != 0;
    const bool correctsNormal = flagInput(context, 14, false);
    const bool bridges = flagInput(context, 15, false);
    if (!context.isComplete() || profile == nullptr) {
        return Value();
    }
    const SplineRows rows = geometry::rowsOf(*profile);
    if (usesTolerance) {
        sections = geometry::sectionsWithin(tolerance, farthestFrom(rows, pivot), end - start);
    }
    if (usesTolerance || findsAxis || correctsNormal || bridges) {
        context.noteUncomputed(); // the given axis is taken, the normal and the profile as they are
    }
    const SplineRows arc = geometry::nearArc(start, end, sections, degree);
    return madeSurface(context, geometry::revolved(rows, arc, pivot, axis, profile->rational));
}

constexpr std::array<std::string_view, 8> kLoftInputs{
    "inputCurve",   "degree",  "uniform",     "close",
    "sectionSpans", "reverse", "autoReverse", "reverseSurfaceNormals"};

/// Turns a curve round whose control points lie nearer to the one before when it runs backwards.
void followBefore(SplineRows& rows, const SplineRows& before)
{
    const Vec3d start = before.points.front().projected();
    const Vec3d end = before.points.back().projected();
    const Vec3d first = rows.points.front().projected();
    const Vec3d last = rows.points.back().projected();
    const double along = length(first - start) + length(last - end);
    const double against = length(last - start) + length(first - end);
    if (against < along && !geometry::isClosed(rows)) {
        geometry::reverse(rows);
    }
}

struct LoftCurves {
    std::vector<SplineRows> rows;
    bool isRational = false;
};

LoftCurves readLoftCurves(ComputeContext& context)
{
    LoftCurves curves;
    const bool turnsRound = flagInput(context, 6, true);
    for (const std::int32_t index : context.elementIndices(0)) {
        const auto curve = context.element(0, index).data<geometry::CurveData>();
        const bool isReversed = context.element(5, index).number(0) != 0;
        SplineRows rows = curve != nullptr ? geometry::rowsOf(*curve) : SplineRows();
        if (rows.points.empty()) {
            continue;
        }
        if (isReversed && !turnsRound) {
            geometry::reverse(rows);
        }
        if (turnsRound && !curves.rows.empty()) {
            followBefore(rows, curves.rows.back());
        }
        curves.isRational = curves.isRational || curve->rational;
        curves.rows.push_back(std::move(rows));
    }
    return curves;
}

Expected<Value> computeLoft(ComputeContext& context)
{
    LoftCurves curves = readLoftCurves(context);
    geometry::LoftOptions options;
    options.degree = context.number(1, 3) == 1 ? 1 : 3;
    options.isUniform = flagInput(context, 2, false);
    options.isClosed = flagInput(context, 3, false);
    options.sectionSpans = wholeInput(context, 4, 1, 1, 64);
    const bool swaps = flagInput(context, 7, false);
    if (!context.isComplete()) {
        return Value();
    }
    if (curves.rows.size() < 2) {
        return Value();
    }
    const bool staysOpen = options.isClosed && curves.rows.size() == 2;
    if (options.degree != 1 && (curves.rows.size() > 2 || staysOpen)) {
        // How Maya ends a cubic loft is not documented; one of two curves is not closed.
        context.noteUncomputed();
    }
    SurfaceData surface = geometry::lofted(std::move(curves.rows), options, curves.isRational);
    return madeSurface(context, swaps ? geometry::reversed(surface, geometry::Reversal::Swap)
                                      : std::move(surface));
}

constexpr std::array<std::string_view, 16> kExtrudeInputs{"profile",          "path",
                                                          "extrudeType",      "directionX",
                                                          "directionY",       "directionZ",
                                                          "length",           "pivotX",
                                                          "pivotY",           "pivotZ",
                                                          "rotation",         "scale",
                                                          "fixedPath",        "useComponentPivot",
                                                          "useProfileNormal", "degreeAlongLength"};

/// The middle of the box around a curve's control points.
Vec3d middleOf(const SplineRows& rows)
{
    Vec3d low = rows.points.front().projected();
    Vec3d high = low;
    for (const auto& point : rows.points) {
        const Vec3d p = point.projected();
        low = {std::min(low.x, p.x), std::min(low.y, p.y), std::min(low.z, p.z)};
        high = {std::max(high.x, p.x), std::max(high.y, p.y), std::max(high.z, p.z)};
    }
    return (low + high) * 0.5;
}

SurfaceData extrudedByLength(ComputeContext& context, const SplineRows& profile, bool isRational)
{
    Vec3d direction = normalized(vectorInput(context, 3, {0, 1, 0}));
    const double size = context.number(6, 1);
    const bool usesNormal = flagInput(context, 14, false);
    const std::int32_t degree = context.number(15, 1) == 3 ? 3 : 1;
    if (usesNormal) {
        context.noteUncomputed(); // along the given direction, not the profile's normal
    }
    const SplineRows line = geometry::lineRows({}, direction * size, 0, 1, 1, degree);
    return geometry::translated(profile, line, {}, isRational);
}

Expected<Value> computeExtrude(ComputeContext& context)
{
    constexpr double kDistance = 0;
    constexpr double kTube = 2;
    const SharedCurve profile = curveInput(context, 0);
    const SharedCurve path = curveInput(context, 1);
    const double type = context.number(2, kTube);
    geometry::ExtrudeOptions options;
    options.turns = type == kTube;
    options.pivot = vectorInput(context, 7, {});
    options.rotation = context.number(10, 0);
    options.scale = context.number(11, 1);
    options.movesToPath = flagInput(context, 12, false);
    const double pivotChoice = context.number(13, 0);
    if (!context.isComplete() || profile == nullptr) {
        return Value();
    }
    const SplineRows rows = geometry::rowsOf(*profile);
    if (rows.points.empty()) {
        return Value();
    }
    if (type == kDistance) {
        SurfaceData surface = extrudedByLength(context, rows, profile->rational);
        return context.isComplete() ? surfaceValue(std::move(surface)) : Value();
    }
    if (path == nullptr) {
        return Value();
    }
    if (pivotChoice != 1) {
        options.pivot = middleOf(rows);
    }
    const SplineRows along = geometry::rowsOf(*path);
    if (type == kTube || options.rotation != 0 || options.scale != 1) {
        context.noteUncomputed(); // a near surface through turned profiles
    }
    return madeSurface(
        context, geometry::extruded(rows, along, options, profile->rational || path->rational));
}

} // namespace

constinit const NodeCompute kRevolve{
    .type = "revolve", .inputs = kRevolveInputs, .outputs = kOutputs, .compute = computeRevolve};
constinit const NodeCompute kLoft{
    .type = "loft", .inputs = kLoftInputs, .outputs = kOutputs, .compute = computeLoft};
constinit const NodeCompute kExtrude{
    .type = "extrude", .inputs = kExtrudeInputs, .outputs = kOutputs, .compute = computeExtrude};

} // namespace host::nodes
