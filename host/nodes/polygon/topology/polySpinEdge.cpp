// polySpinEdge: edges turned round between their two faces.
#include "host/nodes/polygon/topology/componentOperation.h"
#include "host/nodes/polygon/topology/polygonTopologyTypes.h"

#include "host/geometry/mesh/edit/spinEdges.h"

namespace host::nodes {
namespace {

constexpr auto kInputs = meshInputs("offset", "reverse");
constexpr std::array<std::string_view, 1> kOutputs{"output"};
enum Input : std::size_t { kOffset = kFirstOwnInput, kReverse };

constexpr std::int32_t kMostOffset = 1 << 30;

Expected<Value> compute(ComputeContext& context)
{
    const std::int32_t offset = wholeInput(context, kOffset, 1, -kMostOffset, kMostOffset);
    const bool isReverse = flagInput(context, kReverse, false);
    return computeOn(context, geometry::kEdgeComponents,
                     [&](const geometry::MeshData& mesh, const auto& edges) {
                         return geometry::spinEdges(mesh, edges, isReverse ? -offset : offset);
                     });
}

} // namespace

constinit const NodeCompute kPolySpinEdge{
    .type = "polySpinEdge", .inputs = kInputs, .outputs = kOutputs, .compute = compute};

} // namespace host::nodes
