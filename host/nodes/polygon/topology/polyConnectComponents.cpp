// polyConnectComponents: new edges through faces, between vertices or the middles of edges. What
// becomes of a face with more than two of them is not known: approximated. Faces are left out.
#include "host/nodes/polygon/topology/componentOperation.h"
#include "host/nodes/polygon/topology/polygonTopologyTypes.h"

#include "host/geometry/mesh/edit/connectParts.h"

namespace host::nodes {
namespace {

constexpr auto kInputs = meshInputs();
constexpr std::array<std::string_view, 1> kOutputs{"output"};

/// The kind of the components that a node names first.
std::string_view kindOf(const MeshTask& task)
{
    const bool hasAny = task.components != nullptr && !task.components->components.empty();
    const std::string_view first =
        hasAny ? std::string_view(task.components->components.front()) : std::string_view();
    return first.substr(0, first.find('['));
}

Expected<Value> compute(ComputeContext& context)
{
    const MeshTask task = takeMeshTask(context);
    if (!context.isComplete() || task.isIdle()) {
        return task.passed();
    }
    const bool isEdges = kindOf(task) == geometry::kEdgeComponents;
    const auto parts =
        namedComponents(task, isEdges ? geometry::kEdgeComponents : geometry::kVertexComponents);
    if (!parts) {
        return meshResult(context, task, nullptr, Lack::Components);
    }
    const geometry::Connected connected = isEdges ? geometry::connectEdges(*task.mesh, *parts)
                                                  : geometry::connectVertices(*task.mesh, *parts);
    if (!connected.isExact) {
        context.noteLack(Lack::Approximate);
    }
    return meshResult(context, task, connected.mesh);
}

} // namespace

constinit const NodeCompute kPolyConnectComponents{
    .type = "polyConnectComponents", .inputs = kInputs, .outputs = kOutputs, .compute = compute};

} // namespace host::nodes
