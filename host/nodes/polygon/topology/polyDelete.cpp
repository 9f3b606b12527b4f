// polyDelFacet, polyDelEdge, polyDelVertex.
#include "host/nodes/polygon/topology/componentOperation.h"
#include "host/nodes/polygon/topology/polygonTopologyTypes.h"

#include "host/geometry/mesh/edit/deleteFaces.h"
#include "host/geometry/mesh/edit/dissolveEdges.h"
#include "host/geometry/mesh/edit/dissolveVertices.h"

namespace host::nodes {
namespace {

using geometry::MeshData;
using Numbers = std::vector<std::uint32_t>;

constexpr auto kInputs = meshInputs();
constexpr auto kEdgeInputs = meshInputs("cleanVertices");
constexpr std::array<std::string_view, 1> kOutputs{"output"};

Expected<Value> computeFaces(ComputeContext& context)
{
    return computeOn(context, geometry::kFaceComponents,
                     [](const MeshData& mesh, const Numbers& faces) {
                         return geometry::deleteFaces(mesh, faces, geometry::kCleanAll);
                     });
}

Expected<Value> computeEdges(ComputeContext& context)
{
    const bool cleansVertices = context.number(kFirstOwnInput, 0) != 0;
    return computeOn(context, geometry::kEdgeComponents,
                     [&](const MeshData& mesh, const Numbers& edges) {
                         return geometry::deleteEdges(mesh, edges, cleansVertices);
                     });
}

Expected<Value> computeVertices(ComputeContext& context)
{
    return computeOn(context, geometry::kVertexComponents,
                     [](const MeshData& mesh, const Numbers& vertices) {
                         return geometry::dissolveVertices(mesh, vertices, geometry::kCleanAll);
                     });
}

} // namespace

constinit const NodeCompute kPolyDelFacet{
    .type = "polyDelFacet", .inputs = kInputs, .outputs = kOutputs, .compute = computeFaces};
constinit const NodeCompute kPolyDelEdge{
    .type = "polyDelEdge", .inputs = kEdgeInputs, .outputs = kOutputs, .compute = computeEdges};
constinit const NodeCompute kPolyDelVertex{
    .type = "polyDelVertex", .inputs = kInputs, .outputs = kOutputs, .compute = computeVertices};

} // namespace host::nodes
