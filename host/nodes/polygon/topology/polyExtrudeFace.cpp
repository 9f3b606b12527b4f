// polyExtrudeFace: faces drawn out, with walls. Gravity, attraction and magnets are left out, and
// so is a profile curve: the walls are straight then.
#include "host/nodes/polygon/topology/extrusionInputs.h"
#include "host/nodes/polygon/topology/polygonTopologyTypes.h"
#include "host/nodes/polygon/workSpace.h"

#include "host/geometry/mesh/edit/extrudeFaces.h"

#include <numbers>

namespace host::nodes {
namespace {

constexpr auto kInputs = extrusionInputs("offset", "thickness");
constexpr std::array<std::string_view, 1> kOutputs{"output"};
enum Input : std::size_t { kOffset = kFirstExtrusionInput, kThickness };

Expected<Value> compute(ComputeContext& context)
{
    constexpr double kUsualAngle = std::numbers::pi / 6;
    geometry::FaceExtrusion extrusion;
    const ExtrusionMotion motion = readMotion(context);
    extrusion.motion = motion;
    extrusion.motion.offset = context.number(kOffset, 0);
    extrusion.motion.thickness = context.number(kThickness, 0);
    extrusion.isTogether = flagInput(context, kKeepFacesTogether, true);
    extrusion.divisions =
        static_cast<std::uint32_t>(countInput(context, kDivisions, 1, kMostDivisions));
    extrusion.smoothingAngle = context.number(kSmoothingAngle, kUsualAngle);
    return computeOn(
        context, geometry::kFaceComponents,
        inSpace(motion.toSpace, [&](const geometry::MeshData& mesh, const auto& faces) {
            noteUnless(context, motion.isWhole);
            return geometry::extrudeFaces(mesh, faces, extrusion);
        }));
}

} // namespace

constinit const NodeCompute kPolyExtrudeFace{
    .type = "polyExtrudeFace", .inputs = kInputs, .outputs = kOutputs, .compute = compute};

} // namespace host::nodes
