// Nodes that make curves of other things: circular arcs, edges of meshes, curves of surfaces.
#include "host/nodes/nurbs/knotInputs.h"
#include "host/nodes/nurbs/nurbsTypes.h"
#include "host/nodes/nurbs/splineInputs.h"

#include "host/geometry/curve/arcs.h"
#include "host/geometry/mesh/MeshData.h"
#include "host/geometry/nurbs/surfaceAlgebra.h"
#include "host/math/angle.h"

#include <array>
#include <numbers>

namespace host::nodes {
namespace {

using geometry::SplineRows;

constexpr std::array<std::string_view, 1> kOutputs{"outputCurve"};
constexpr double kTurn = 2 * std::numbers::pi;

/// An arc from a point about a centre, `sweep` radians about the normal.
Value arcFrom(const Vec3d& from, const Vec3d& center, const Vec3d& normal, double sweep,
              std::int32_t sections, std::int32_t degree)
{
    const Vec3d x = from - center;
    const SplineRows arc = geometry::nearArc(0, sweep, sections, degree);
    return curveValue(geometry::curveOf(geometry::placed(arc, center, x, cross(normal, x)), false));
}

/// The angle from one vector to another about a unit normal, 0..2 pi.
double turnBetween(const Vec3d& from, const Vec3d& to, const Vec3d& normal)
{
    const Vec3d turned = cross(from, to);
    const double sine = dot(turned, normal);
    const double angle = angleOf(std::fabs(sine), dot(from, to));
    return sine >= 0 ? angle : kTurn - angle;
}

Value lineThrough(const std::vector<Vec3d>& points)
{
    geometry::CurveData line;
    line.degree = 1;
    line.spans = static_cast<std::int32_t>(points.size()) - 1;
    for (std::size_t i = 0; i < points.size(); ++i) {
        line.knots.push_back(static_cast<double>(i));
        line.poles.insert(line.poles.end(), {points[i].x, points[i].y, points[i].z});
    }
    return points.size() < 2 ? Value() : Value::of(std::move(line));
}

constexpr std::array<std::string_view, 11> kThreePointInputs{
    "point1X", "point1Y", "point1Z", "point2X",  "point2Y", "point2Z",
    "point3X", "point3Y", "point3Z", "sections", "degree"};

/// From the first point through the second to the third; points on a line give that line.
Expected<Value> computeThreePoint(ComputeContext& context)
{
    const Vec3d a = vectorInput(context, 0, {0, 1, 0});
    const Vec3d b = vectorInput(context, 3, {0, 0, 0});
    const Vec3d c = vectorInput(context, 6, {1, 0, 0});
    const std::int32_t sections = countInput(context, 9, 8, geometry::kMaxSections);
    const std::int32_t degree = wholeInput(context, 10, 3, 0, 7);
    if (!context.isComplete()) {
        return Value();
    }
    const Vec3d ab = b - a;
    const Vec3d ac = c - a;
    const Vec3d normal = cross(ab, ac);
    const double size = dot(normal, normal);
    if (!(size > 1e-24 * dot(ab, ab) * dot(ac, ac))) {
        return lineThrough({a, b, c});
    }
    // The centre of the circle through three points.
    const Vec3d center =
        a + (cross(normal, ab) * dot(ac, ac) + cross(ac, normal) * dot(ab, ab)) * (1 / (2 * size));
    const Vec3d unit = normalized(normal);
    return arcFrom(a, center, unit, turnBetween(a - center, c - center, unit), sections, degree);
}

constexpr std::array<std::string_view, 13> kTwoPointInputs{
    "point1X",  "point1Y",          "point1Z",          "point2X",          "point2Y",
    "point2Z",  "directionVectorX", "directionVectorY", "directionVectorZ", "radius",
    "sections", "degree",           "toggleArc"};

/// From one point to the other in the plane across the direction vector; the smaller of both arcs,
/// or the greater when toggled. A radius below half the distance counts as that.
Expected<Value> computeTwoPoint(ComputeContext& context)
{
    const Vec3d a = vectorInput(context, 0, {1, 0, 0});
    const Vec3d b = vectorInput(context, 3, {-1, 0, 0});
    const Vec3d direction = vectorInput(context, 6, {0, 0, 1});
    const double radius = context.number(9, 1);
    const std::int32_t sections = countInput(context, 10, 8, geometry::kMaxSections);
    const std::int32_t degree = wholeInput(context, 11, 3, 0, 7);
    const bool isGreater = flagInput(context, 12, false);
    if (!context.isComplete()) {
        return Value();
    }
    const Vec3d half = (b - a) * 0.5;
    const Vec3d across = normalized(cross(direction, half));
    if (!(dot(across, across) > 0)) {
        return lineThrough({a, b});
    }
    const double rest = radius * radius - dot(half, half);
    const double height = rest > 0 ? std::sqrt(rest) : 0;
    const Vec3d center = a + half + across * (isGreater ? -height : height);
    const Vec3d normal = normalized(cross(half, across));
    context.noteUncomputed(); // on which side the arc lies is not documented
    return arcFrom(a, center, normal, turnBetween(a - center, b - center, normal), sections,
                   degree);
}

constexpr std::array<std::string_view, 2> kEdgeInputs{"inputMesh", "edgeIndex"};

Expected<Value> computeMeshEdge(ComputeContext& context)
{
    const auto mesh = context.input(0).data<geometry::MeshData>();
    const std::vector<double> indices = numbersInput(context, 1);
    if (!context.isComplete() || mesh == nullptr || mesh->points == nullptr || indices.empty()) {
        return Value();
    }
    if (indices.size() > 1) {
        context.noteUncomputed(); // the first edge stands for the chain
    }
    const auto& edges = mesh->topology->edges;
    if (!(indices.front() >= 0 && indices.front() < static_cast<double>(edges.size()))) {
        return Value();
    }
    const geometry::MeshEdge edge = edges[static_cast<std::size_t>(indices.front())];
    return lineThrough(
        {toDouble((*mesh->points)[edge.start]), toDouble((*mesh->points)[edge.end])});
}

constexpr std::array<std::string_view, 7> kIsoInputs{
    "inputSurface", "isoparmValue", "isoparmDirection", "relativeValue",
    "minValue",     "maxValue",     "relative"};

/// Direction 0 holds u at the value.
Expected<Value> computeIso(ComputeContext& context)
{
    const SharedSurface surface = surfaceInput(context, 0);
    double value = context.number(1, 0);
    const bool holdsU = context.number(2, 0) == 0;
    const bool isRelativeValue = flagInput(context, 3, false);
    const double low = context.number(4, 1);
    const double high = context.number(5, -1);
    const bool isRelative = flagInput(context, 6, false);
    if (!context.isComplete() || surface == nullptr) {
        return Value();
    }
    const auto direction = holdsU ? geometry::SurfaceDirection::U : geometry::SurfaceDirection::V;
    const SplineRows rows = geometry::rowsOf(*surface, direction);
    if (rows.points.empty()) {
        return Value();
    }
    if (isRelativeValue) {
        value = rows.start() + value * (rows.end() - rows.start());
    }
    const SplineRows curve =
        geometry::rowsOf(geometry::isoparametricCurve(*surface, direction, value));
    return curveValue(
        geometry::curveOf(partInRange(curve, low, high, isRelative), surface->rational));
}

} // namespace

constinit const NodeCompute kMakeThreePointCircularArc{.type = "makeThreePointCircularArc",
                                                       .inputs = kThreePointInputs,
                                                       .outputs = kOutputs,
                                                       .compute = computeThreePoint};
constinit const NodeCompute kMakeTwoPointCircularArc{.type = "makeTwoPointCircularArc",
                                                     .inputs = kTwoPointInputs,
                                                     .outputs = kOutputs,
                                                     .compute = computeTwoPoint};
constinit const NodeCompute kCurveFromMeshEdge{.type = "curveFromMeshEdge",
                                               .inputs = kEdgeInputs,
                                               .outputs = kOutputs,
                                               .compute = computeMeshEdge};
constinit const NodeCompute kCurveFromSurfaceIso{.type = "curveFromSurfaceIso",
                                                 .inputs = kIsoInputs,
                                                 .outputs = kOutputs,
                                                 .compute = computeIso};

} // namespace host::nodes
