// polyExtrudeVertex: vertices drawn out to points. More divisions than one are left out.
#include "host/nodes/polygon/topology/componentOperation.h"
#include "host/nodes/polygon/topology/polygonTopologyTypes.h"
#include "host/nodes/polygon/workSpace.h"

#include "host/geometry/mesh/edit/extrudeVertices.h"

namespace host::nodes {
namespace {

constexpr auto kInputs = meshInputs("inputMatrix", "worldSpace", "width", "length", "divisions");
constexpr std::array<std::string_view, 1> kOutputs{"output"};
enum Input : std::size_t { kMatrix = kFirstOwnInput, kWorldSpace, kWidth, kLength, kDivisions };

Expected<Value> compute(ComputeContext& context)
{
    geometry::VertexExtrusion extrusion;
    const Matrix4 toWorld = matrixOf(context.input(kMatrix));
    if (flagInput(context, kWorldSpace, false)) {
        extrusion.toSpace = toWorld;
    }
    extrusion.width = context.number(kWidth, 0);
    extrusion.length = context.number(kLength, 0);
    const bool isDivided = context.number(kDivisions, 1) > 1;
    return computeOn(
        context, geometry::kVertexComponents,
        inSpace(extrusion.toSpace, [&](const geometry::MeshData& mesh, const auto& vertices) {
            noteUnless(context, !isDivided);
            return geometry::extrudeVertices(mesh, vertices, extrusion);
        }));
}

} // namespace

constinit const NodeCompute kPolyExtrudeVertex{
    .type = "polyExtrudeVertex", .inputs = kInputs, .outputs = kOutputs, .compute = compute};

} // namespace host::nodes
