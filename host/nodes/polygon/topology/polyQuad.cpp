// polyQuad: pairs of triangles become quads.
#include "host/nodes/polygon/topology/componentOperation.h"
#include "host/nodes/polygon/topology/polygonTopologyTypes.h"

#include "host/geometry/mesh/edit/joinTriangles.h"

#include <numbers>

namespace host::nodes {
namespace {

using geometry::MeshData;
using Numbers = std::vector<std::uint32_t>;

constexpr auto kInputs =
    meshInputs("angle", "keepGroupBorder", "keepTextureBorders", "keepHardEdges");
enum Position : std::size_t {
    kAngle = kFirstOwnInput,
    kKeepGroupBorder,
    kKeepTextureBorders,
    kKeepHardEdges
};
constexpr std::array<std::string_view, 1> kOutputs{"output"};

Expected<Value> compute(ComputeContext& context)
{
    constexpr double kUsualAngle = std::numbers::pi / 6;
    geometry::QuadRules rules;
    rules.angle = context.number(kAngle, kUsualAngle);
    rules.keepsGroupBorders = flagInput(context, kKeepGroupBorder, true);
    rules.keepsTextureBorders = flagInput(context, kKeepTextureBorders, true);
    rules.keepsHardEdges = flagInput(context, kKeepHardEdges, true);
    return computeOn(context, geometry::kFaceComponents,
                     [&](const MeshData& mesh, const Numbers& faces) {
                         const auto joined = joinTriangles(mesh, faces, rules);
                         if (!joined.isOnlyWay) {
                             context.noteUncomputed();
                         }
                         return joined.mesh;
                     });
}

} // namespace

constinit const NodeCompute kPolyQuad{
    .type = "polyQuad", .inputs = kInputs, .outputs = kOutputs, .compute = compute};

} // namespace host::nodes
