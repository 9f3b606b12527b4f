// polySubdEdge: new vertices on edges. A least size of the pieces is left out.
#include "host/nodes/polygon/topology/componentOperation.h"
#include "host/nodes/polygon/topology/polygonTopologyTypes.h"

#include "host/geometry/mesh/edit/divideEdges.h"

namespace host::nodes {
namespace {

constexpr auto kInputs = meshInputs("divisions", "size");
constexpr std::array<std::string_view, 1> kOutputs{"output"};
enum Input : std::size_t { kDivisions = kFirstOwnInput, kSize };

constexpr std::int32_t kMostDivisions = 1 << 20;

Expected<Value> compute(ComputeContext& context)
{
    const auto divisions =
        static_cast<std::uint32_t>(countInput(context, kDivisions, 1, kMostDivisions, 0));
    const bool isLimited = context.number(kSize, 0) > 0;
    return computeOn(context, geometry::kEdgeComponents,
                     [&](const geometry::MeshData& mesh, const auto& edges) {
                         noteUnless(context, !isLimited);
                         return geometry::divideEdges(mesh, edges, divisions);
                     });
}

} // namespace

constinit const NodeCompute kPolySubdEdge{
    .type = "polySubdEdge", .inputs = kInputs, .outputs = kOutputs, .compute = compute};

} // namespace host::nodes
