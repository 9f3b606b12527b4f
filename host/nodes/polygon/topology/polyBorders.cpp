// polyMergeEdge, polySewEdge, polyCloseBorder: borders of meshes joined and filled.
#include "host/nodes/polygon/topology/componentOperation.h"
#include "host/nodes/polygon/topology/polygonTopologyTypes.h"

#include "host/geometry/mesh/edit/closeBorders.h"
#include "host/geometry/mesh/edit/clusterVertices.h"
#include "host/geometry/mesh/edit/joinEdges.h"

namespace host::nodes {
namespace {

using geometry::MeshData;
using Numbers = std::vector<std::uint32_t>;

constexpr std::array<std::string_view, 1> kOutputs{"output"};

// --- polyMergeEdge: two edges, named by number
constexpr auto kMergeInputs = meshInputs("firstEdge", "secondEdge", "mergeMode");
enum MergeInput : std::size_t { kFirstEdge = kFirstOwnInput, kSecondEdge, kMergeMode };

Expected<Value> computeMerge(ComputeContext& context)
{
    constexpr std::int32_t kMost = 2147483647;
    const std::int32_t first = wholeInput(context, kFirstEdge, -1, -1, kMost);
    const std::int32_t second = wholeInput(context, kSecondEdge, -1, -1, kMost);
    const auto merging =
        static_cast<geometry::EdgeMerging>(wholeInput(context, kMergeMode, 1, 0, 2));
    const MeshTask task = takeMeshTask(context);
    if (!context.isComplete() || task.isIdle()) {
        return task.passed();
    }
    const bool areNamed = first >= 0 && second >= 0;
    return meshResult(context, task,
                      areNamed ? mergeEdges(*task.mesh, static_cast<std::uint32_t>(first),
                                            static_cast<std::uint32_t>(second), merging)
                               : nullptr);
}

// --- polySewEdge
constexpr auto kSewInputs = meshInputs("inputMatrix", "worldSpace", "tolerance");
enum SewInput : std::size_t { kMatrix = kFirstOwnInput, kWorldSpace, kTolerance };

Expected<Value> computeSew(ComputeContext& context)
{
    const Value matrix = context.input(kMatrix);
    const bool isInWorld = flagInput(context, kWorldSpace, false);
    const double tolerance = context.number(kTolerance, 0);
    return computeOn(context, geometry::kEdgeComponents,
                     [&](const MeshData& mesh, const Numbers& edges) {
                         const Matrix4 space = isInWorld ? matrixOf(matrix) : Matrix4{};
                         return sewEdges(mesh, edges, geometry::placesIn(mesh, space), tolerance);
                     });
}

// --- polyCloseBorder
constexpr auto kCloseInputs = meshInputs();

Expected<Value> computeClose(ComputeContext& context)
{
    return computeOn(context, geometry::kEdgeComponents, geometry::closeBorders);
}

} // namespace

constinit const NodeCompute kPolyMergeEdge{
    .type = "polyMergeEdge", .inputs = kMergeInputs, .outputs = kOutputs, .compute = computeMerge};
constinit const NodeCompute kPolySewEdge{
    .type = "polySewEdge", .inputs = kSewInputs, .outputs = kOutputs, .compute = computeSew};
constinit const NodeCompute kPolyCloseBorder{.type = "polyCloseBorder",
                                             .inputs = kCloseInputs,
                                             .outputs = kOutputs,
                                             .compute = computeClose};

} // namespace host::nodes
