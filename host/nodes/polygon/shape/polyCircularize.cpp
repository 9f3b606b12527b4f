// polyCircularize: the outlines of faces, or loops of edges, drawn to circles. Vertices inside stay
// where they are; new vertices on the circle, and other ways to align it, are left out.
#include "host/nodes/polygon/meshInputs.h"
#include "host/nodes/polygon/shape/polygonShapeTypes.h"
#include "host/nodes/polygon/workSpace.h"

#include "host/geometry/mesh/shape/circularize.h"

#include <algorithm>
#include <numbers>

namespace host::nodes {
namespace {

using geometry::VertexLoop;
using Numbers = std::vector<std::uint32_t>;

constexpr auto kInputs =
    meshInputs("inputMatrix", "alignment", "divisions", "evenlyDistribute", "normalOffset",
               "radialOffset", "relaxInterior", "supportingEdges", "twist");
constexpr std::array<std::string_view, 1> kOutputs{"output"};
enum Input : std::size_t {
    kMatrix = kFirstOwnInput,
    kAlignment,
    kDivisions,
    kEvenlyDistribute,
    kNormalOffset,
    kRadialOffset,
    kRelaxInterior,
    kSupportingEdges,
    kTwist
};

/// True where faces have more vertices than their outlines: those follow the circle in Maya.
bool haveInside(const geometry::MeshTopology& topology, const Numbers& faces,
                const std::vector<VertexLoop>& loops)
{
    std::vector<bool> isOutline(topology.vertexCount);
    for (const VertexLoop& loop : loops) {
        for (const std::uint32_t vertex : loop) {
            isOutline[vertex] = true;
        }
    }
    return std::any_of(faces.begin(), faces.end(), [&](std::uint32_t face) {
        for (std::uint32_t corner = topology.firstCorner(face); corner < topology.endCorner(face);
             ++corner) {
            if (!isOutline[topology.cornerVertex(corner)]) {
                return true;
            }
        }
        return false;
    });
}

/// The loops that the node names as faces or as edges.
std::optional<geometry::EdgeLoops> namedLoops(const MeshTask& task)
{
    const geometry::MeshTopology& topology = *task.mesh->topology;
    if (const auto faces = namedComponents(task, geometry::kFaceComponents, topology.faceCount())) {
        geometry::EdgeLoops loops{geometry::loopsAroundFaces(topology, *faces), true};
        loops.isWhole = !haveInside(topology, *faces, loops.loops);
        return loops;
    }
    const auto edges = namedComponents(task, geometry::kEdgeComponents, topology.edges.size());
    return edges ? std::optional(geometry::loopsOfEdges(*task.mesh, *edges)) : std::nullopt;
}

Expected<Value> compute(ComputeContext& context)
{
    constexpr double kDegree = std::numbers::pi / 180;
    const MeshTask task = takeMeshTask(context);
    geometry::Circularity circularity;
    circularity.toSpace = matrixOf(context.input(kMatrix));
    circularity.isEven = flagInput(context, kEvenlyDistribute, true);
    circularity.normalOffset = context.number(kNormalOffset, 0);
    circularity.radialOffset = context.number(kRadialOffset, 0);
    circularity.twist = context.number(kTwist, 0) * kDegree;
    const bool isKnown = context.number(kAlignment, 0) == 0 && context.number(kDivisions, 0) == 0 &&
                         context.number(kRelaxInterior, 0) == 0 &&
                         context.number(kSupportingEdges, 0) == 0;
    if (!context.isComplete() || task.isIdle()) {
        return task.passed();
    }
    const auto loops = namedLoops(task);
    if (!loops || !hasWayBack(circularity.toSpace)) {
        return meshResult(context, task, nullptr, loops ? Lack::Input : Lack::Components);
    }
    if (!isKnown || !loops->isWhole) {
        context.noteLack(isKnown ? Lack::Approximate : Lack::Setting);
    }
    return meshResult(context, task, geometry::circularize(*task.mesh, loops->loops, circularity));
}

} // namespace

constinit const NodeCompute kPolyCircularize{
    .type = "polyCircularize", .inputs = kInputs, .outputs = kOutputs, .compute = compute};

} // namespace host::nodes
