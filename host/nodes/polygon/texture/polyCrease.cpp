// polyCrease, polyCreaseEdge: how sharp edges and vertices are when the mesh is smoothed.
#include "host/nodes/polygon/meshInputs.h"
#include "host/nodes/polygon/texture/polygonTextureTypes.h"

#include "host/geometry/mesh/texture/setCreases.h"

#include <cmath>

namespace host::nodes {
namespace {

using geometry::Crease;

constexpr auto kInputs = meshInputs("crease", "creaseVertex");
constexpr std::array<std::string_view, 1> kOutputs{"output"};
constexpr std::size_t kEdges = kFirstOwnInput;
constexpr std::size_t kVertices = kFirstOwnInput + 1;

/// Elements go by the numbers of edges or vertices; negative ones say nothing.
std::vector<Crease> creasesOf(const NumericArray* array)
{
    std::vector<Crease> creases;
    if (array == nullptr) {
        return creases;
    }
    for (const NumericArray::Run& run : array->runs()) {
        for (std::uint32_t i = 0; i < run.count; ++i) {
            const double value = array->number(run.first + i, 0, -1);
            if (value >= 0 && std::isfinite(value)) {
                creases.push_back({run.first + i, static_cast<float>(value)});
            }
        }
    }
    return creases;
}

bool isWithin(const NumericArray* array, std::size_t count)
{
    return array == nullptr || array->endIndex() <= count;
}

Expected<Value> compute(ComputeContext& context)
{
    const MeshTask task = takeMeshTask(context);
    const NumericArray* const ofEdges = context.array(kEdges);
    const NumericArray* const ofVertices = context.array(kVertices);
    const std::vector<Crease> edges = creasesOf(ofEdges);
    const std::vector<Crease> vertices = creasesOf(ofVertices);
    if (!context.isComplete() || task.isIdle() || (edges.empty() && vertices.empty())) {
        return task.passed();
    }
    const geometry::MeshTopology& topology = *task.mesh->topology;
    if (!isWithin(ofEdges, topology.edges.size()) || !isWithin(ofVertices, topology.vertexCount)) {
        context.noteLack(Lack::Components);
    }
    return meshResult(context, task, geometry::setCreases(*task.mesh, edges, vertices));
}

} // namespace

constinit const NodeCompute kPolyCrease{
    .type = "polyCrease", .inputs = kInputs, .outputs = kOutputs, .compute = compute};
constinit const NodeCompute kPolyCreaseEdge{
    .type = "polyCreaseEdge", .inputs = kInputs, .outputs = kOutputs, .compute = compute};

} // namespace host::nodes
