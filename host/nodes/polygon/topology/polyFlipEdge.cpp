// polyFlipEdge: edges between triangles turned.
#include "host/nodes/polygon/topology/componentOperation.h"
#include "host/nodes/polygon/topology/polygonTopologyTypes.h"

#include "host/geometry/mesh/edit/flipEdges.h"

namespace host::nodes {
namespace {

constexpr auto kInputs = meshInputs();
constexpr std::array<std::string_view, 1> kOutputs{"output"};

Expected<Value> compute(ComputeContext& context)
{
    return computeOn(context, geometry::kEdgeComponents, geometry::flipEdges);
}

} // namespace

constinit const NodeCompute kPolyFlipEdge{
    .type = "polyFlipEdge", .inputs = kInputs, .outputs = kOutputs, .compute = compute};

} // namespace host::nodes
