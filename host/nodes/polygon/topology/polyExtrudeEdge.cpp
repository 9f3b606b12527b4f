// polyExtrudeEdge: edges drawn out, with walls. A profile curve is left out: the walls are straight
// then.
#include "host/nodes/polygon/topology/extrusionInputs.h"
#include "host/nodes/polygon/topology/polygonTopologyTypes.h"
#include "host/nodes/polygon/workSpace.h"

#include "host/geometry/mesh/edit/extrudeEdges.h"

#include <numbers>

namespace host::nodes {
namespace {

constexpr auto kInputs = extrusionInputs();
constexpr std::array<std::string_view, 1> kOutputs{"output"};

Expected<Value> compute(ComputeContext& context)
{
    constexpr double kUsualAngle = std::numbers::pi / 6;
    geometry::EdgeExtrusion extrusion;
    const ExtrusionMotion motion = readMotion(context);
    extrusion.motion = motion;
    extrusion.isTogether = flagInput(context, kKeepFacesTogether, true);
    extrusion.divisions =
        static_cast<std::uint32_t>(countInput(context, kDivisions, 1, kMostDivisions));
    extrusion.smoothingAngle = context.number(kSmoothingAngle, kUsualAngle);
    return computeOn(
        context, geometry::kEdgeComponents,
        inSpace(motion.toSpace, [&](const geometry::MeshData& mesh, const auto& edges) {
            noteUnless(context, motion.isWhole);
            return geometry::extrudeEdges(mesh, edges, extrusion);
        }));
}

} // namespace

constinit const NodeCompute kPolyExtrudeEdge{
    .type = "polyExtrudeEdge", .inputs = kInputs, .outputs = kOutputs, .compute = compute};

} // namespace host::nodes
