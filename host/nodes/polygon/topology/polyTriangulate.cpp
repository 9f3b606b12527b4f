// polyTriangulate: faces cut into triangles.
#include "host/nodes/polygon/topology/componentOperation.h"
#include "host/nodes/polygon/topology/polygonTopologyTypes.h"

#include "host/geometry/mesh/edit/triangulateFaces.h"

namespace host::nodes {
namespace {

constexpr auto kInputs = meshInputs();
constexpr std::array<std::string_view, 1> kOutputs{"output"};

Expected<Value> compute(ComputeContext& context)
{
    return computeOn(context, geometry::kFaceComponents, geometry::triangulateFaces);
}

} // namespace

constinit const NodeCompute kPolyTriangulate{
    .type = "polyTriangulate", .inputs = kInputs, .outputs = kOutputs, .compute = compute};

} // namespace host::nodes
