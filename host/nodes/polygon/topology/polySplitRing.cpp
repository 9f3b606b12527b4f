// polySplitRing: loops of new edges across a ring of edges. The profile curve and the edge flow,
// which bend the new loops, are left out, and so are distances that are not equal parts of each
// edge and the quads that would be made of the faces at the ends of the ring.
#include "host/nodes/polygon/topology/componentOperation.h"
#include "host/nodes/polygon/topology/polygonTopologyTypes.h"

#include "host/geometry/mesh/edit/splitRing.h"

#include <algorithm>
#include <numbers>

namespace host::nodes {
namespace {

using geometry::RingSplit;
using geometry::RingSplitting;

constexpr auto kInputs =
    meshInputs("splitType", "weight", "direction", "rootEdge", "divisions", "smoothingAngle",
               "enableProfileCurve", "profileCurve_FloatValue", "insertWithEdgeFlow",
               "useEqualMultiplier", "fixQuads");
constexpr std::array<std::string_view, 1> kOutputs{"output"};
enum Input : std::size_t {
    kSplitType = kFirstOwnInput,
    kWeight,
    kDirection,
    kRootEdge,
    kDivisions,
    kSmoothingAngle,
    kEnableProfileCurve,
    kProfileValue,
    kEdgeFlow,
    kEqualMultiplier,
    kFixQuads
};

/// True where the new loops leave the edges that they cross.
bool isBent(ComputeContext& context)
{
    bool hasProfile = false;
    for (const std::int32_t index : context.elementIndices(kProfileValue)) {
        hasProfile = context.element(kProfileValue, index).number(0) != 0 || hasProfile;
    }
    const bool isFlowing = flagInput(context, kEdgeFlow, false);
    return (flagInput(context, kEnableProfileCurve, true) && hasProfile) || isFlowing;
}

RingSplitting readSplitting(ComputeContext& context)
{
    RingSplitting splitting;
    const std::int32_t type = wholeInput(context, kSplitType, 1, 0, 2);
    splitting.type = static_cast<RingSplit>(type);
    splitting.weight = std::clamp(context.number(kWeight, 0.5), 0.0, 1.0);
    splitting.measuresFromStart = flagInput(context, kDirection, true);
    const double root = context.number(kRootEdge, -1);
    if (root >= 0 && root < geometry::kNone) {
        splitting.rootEdge = static_cast<std::uint32_t>(root);
    }
    splitting.loopCount =
        static_cast<std::uint32_t>(countInput(context, kDivisions, 2, geometry::kMaxRingLoops));
    splitting.smoothingAngle = context.number(kSmoothingAngle, std::numbers::pi);
    return splitting;
}

Expected<Value> compute(ComputeContext& context)
{
    const RingSplitting splitting = readSplitting(context);
    const bool isSupported = !isBent(context) && flagInput(context, kEqualMultiplier, true) &&
                             !flagInput(context, kFixQuads, false);
    return computeOn(context, geometry::kEdgeComponents,
                     [&](const geometry::MeshData& mesh, const auto& edges) {
                         noteUnless(context, isSupported);
                         return geometry::splitRing(mesh, edges, splitting);
                     });
}

} // namespace

constinit const NodeCompute kPolySplitRing{
    .type = "polySplitRing", .inputs = kInputs, .outputs = kOutputs, .compute = compute};

} // namespace host::nodes
