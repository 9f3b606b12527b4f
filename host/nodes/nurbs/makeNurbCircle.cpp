// makeNurbCircle and makeNurbsSquare: curves in a plane.
#include "host/nodes/nurbs/nurbsTypes.h"
#include "host/nodes/nurbs/splineInputs.h"

#include "host/geometry/curve/arcs.h"
#include "host/geometry/nurbs/primitives.h"

#include <array>
#include <numbers>

namespace host::nodes {
namespace {

constexpr double kTurn = 2 * std::numbers::pi;
constexpr std::array<std::string_view, 12> kCircleInputs{
    "normalX", "normalY", "normalZ",  "centerX",      "centerY",   "centerZ",
    "radius",  "sweep",   "sections", "useTolerance", "tolerance", "degree"};
constexpr std::array<std::string_view, 1> kCircleOutputs{"outputCurve"};

/// The circle begins at what +y turned towards the normal makes of -z, and runs counter-clockwise
/// about the normal.
Expected<Value> computeCircle(ComputeContext& context)
{
    const Vec3d normal = vectorInput(context, 0, {0, 0, 1});
    const Vec3d center = vectorInput(context, 3, {});
    const double radius = context.number(6, 1);
    const double sweep = context.number(7, kTurn);
    std::int32_t sections = countInput(context, 8, 8, geometry::kMaxSections);
    const bool usesTolerance = flagInput(context, 9, false);
    const double tolerance = context.number(10, 0.01);
    const std::int32_t degree = wholeInput(context, 11, 3, 0, 7);
    if (!context.isComplete()) {
        return Value();
    }
    if (usesTolerance) {
        sections = geometry::sectionsWithin(tolerance, radius, sweep);
        context.noteUncomputed(); // how many sections a tolerance takes is not documented
    }
    const geometry::Frame frame = geometry::frameOf(normal);
    const auto arc = geometry::placed(geometry::nearArc(0, sweep, sections, degree), center,
                                      frame.y * radius, frame.x * -radius);
    return curveValue(geometry::curveOf(arc, false));
}

constexpr std::array<std::string_view, 10> kSquareInputs{
    "normalX", "normalY",     "normalZ",     "centerX",      "centerY",
    "centerZ", "sideLength1", "sideLength2", "spansPerSide", "degree"};
constexpr std::array<std::string_view, 4> kSquareOutputs{"outputCurve1", "outputCurve2",
                                                         "outputCurve3", "outputCurve4"};

/// Four lines that follow one another counter-clockwise about the normal.
Expected<Value> computeSquare(ComputeContext& context)
{
    const Vec3d normal = vectorInput(context, 0, {0, 0, 1});
    const Vec3d center = vectorInput(context, 3, {});
    const double side1 = context.number(6, 1);
    const double side2 = context.number(7, 1);
    const std::int32_t spans = countInput(context, 8, 1, geometry::kMaxPatches);
    const std::int32_t degree = wholeInput(context, 9, 3, 0, 7);
    if (!context.isComplete()) {
        return Value();
    }
    const geometry::Frame frame = geometry::frameOf(normal);
    const Vec3d x = frame.x * (side1 / 2);
    const Vec3d y = frame.y * (side2 / 2);
    const std::array<Vec3d, 4> corners{center + x + y, center - x + y, center - x - y,
                                       center + x - y};
    const std::size_t side = context.output();
    const auto line = geometry::lineRows(corners[side], corners[(side + 1) % 4], 0, spans, spans,
                                         degree == 1 ? 1 : 3);
    return curveValue(geometry::curveOf(line, false));
}

} // namespace

constinit const NodeCompute kMakeNurbCircle{.type = "makeNurbCircle",
                                            .inputs = kCircleInputs,
                                            .outputs = kCircleOutputs,
                                            .compute = computeCircle};
constinit const NodeCompute kMakeNurbsSquare{.type = "makeNurbsSquare",
                                             .inputs = kSquareInputs,
                                             .outputs = kSquareOutputs,
                                             .compute = computeSquare};

} // namespace host::nodes
