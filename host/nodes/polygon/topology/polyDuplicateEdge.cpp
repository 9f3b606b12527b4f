// polyDuplicateEdge: new edge loops on both sides of others. Ends that are moved, and loops that
// follow the curvature, are left out.
#include "host/nodes/polygon/topology/componentOperation.h"
#include "host/nodes/polygon/topology/polygonTopologyTypes.h"

#include "host/geometry/mesh/edit/duplicateEdgeLoops.h"

#include <algorithm>
#include <numbers>

namespace host::nodes {
namespace {

constexpr auto kInputs = meshInputs("offset", "splitType", "deleteEdge", "smoothingAngle",
                                    "startVertexOffset", "endVertexOffset", "insertWithEdgeFlow");
constexpr std::array<std::string_view, 1> kOutputs{"output"};
enum Input : std::size_t {
    kOffset = kFirstOwnInput,
    kSplitType,
    kDeleteEdge,
    kSmoothingAngle,
    kStartOffset,
    kEndOffset,
    kEdgeFlow
};

Expected<Value> compute(ComputeContext& context)
{
    constexpr double kAbsolute = 0;
    geometry::LoopDuplication duplication;
    const double offset = context.number(kOffset, 0.5);
    duplication.offset = offset > 0 ? std::min(offset, 1.0) : 0;
    duplication.isDistance = context.number(kSplitType, 1) == kAbsolute;
    duplication.deletesEnds = flagInput(context, kDeleteEdge, true);
    duplication.smoothingAngle = context.number(kSmoothingAngle, std::numbers::pi);
    const bool isPlain = context.number(kStartOffset, 0) == 0 &&
                         context.number(kEndOffset, 0) == 0 &&
                         !flagInput(context, kEdgeFlow, false);
    return computeOn(context, geometry::kEdgeComponents,
                     [&](const geometry::MeshData& mesh, const auto& edges) {
                         noteUnless(context, isPlain);
                         auto made = geometry::duplicateEdgeLoops(mesh, edges, duplication);
                         if (made.mesh != nullptr && !made.isWhole) {
                             context.noteLack(Lack::Approximate);
                         }
                         return made.mesh;
                     });
}

} // namespace

constinit const NodeCompute kPolyDuplicateEdge{
    .type = "polyDuplicateEdge", .inputs = kInputs, .outputs = kOutputs, .compute = compute};

} // namespace host::nodes
