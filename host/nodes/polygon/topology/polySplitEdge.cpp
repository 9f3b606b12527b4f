// polySplitEdge, polySplitVert: faces taken apart along edges or at vertices, where they are.
#include "host/nodes/polygon/topology/componentOperation.h"
#include "host/nodes/polygon/topology/polygonTopologyTypes.h"

#include "host/geometry/mesh/edit/detachEdges.h"

namespace host::nodes {
namespace {

constexpr auto kInputs = meshInputs();
constexpr std::array<std::string_view, 1> kOutputs{"output"};

Expected<Value> splitEdges(ComputeContext& context)
{
    return computeOn(context, geometry::kEdgeComponents, geometry::detachEdges);
}

Expected<Value> splitVertices(ComputeContext& context)
{
    return computeOn(context, geometry::kVertexComponents, geometry::detachVertices);
}

} // namespace

constinit const NodeCompute kPolySplitEdge{
    .type = "polySplitEdge", .inputs = kInputs, .outputs = kOutputs, .compute = splitEdges};
constinit const NodeCompute kPolySplitVert{
    .type = "polySplitVert", .inputs = kInputs, .outputs = kOutputs, .compute = splitVertices};

} // namespace host::nodes
