// polyBridgeEdge: faces between two borders. Curved, twisted and tapered bridges are made straight.
#include "host/nodes/polygon/topology/componentOperation.h"
#include "host/nodes/polygon/topology/polygonTopologyTypes.h"

#include "host/geometry/mesh/edit/bridgeEdges.h"

#include <numbers>

namespace host::nodes {
namespace {

constexpr auto kInputs = meshInputs("startVert1", "startVert2", "bridgeOffset", "divisions",
                                    "smoothingAngle", "curveType", "twist", "taper");
constexpr std::array<std::string_view, 1> kOutputs{"output"};
enum Input : std::size_t {
    kStart1 = kFirstOwnInput,
    kStart2,
    kOffset,
    kDivisions,
    kSmoothingAngle,
    kCurveType,
    kTwist,
    kTaper
};

constexpr std::int32_t kMostDivisions = 10000;
constexpr std::int32_t kMostShift = 1 << 30;

std::uint32_t vertexInput(ComputeContext& context, std::size_t position)
{
    const double vertex = context.number(position, -1);
    return vertex >= 0 && vertex < geometry::kNone ? static_cast<std::uint32_t>(vertex)
                                                   : geometry::kNone;
}

Expected<Value> compute(ComputeContext& context)
{
    constexpr double kUsualAngle = std::numbers::pi / 6;
    geometry::Bridging bridging;
    bridging.startVertex1 = vertexInput(context, kStart1);
    bridging.startVertex2 = vertexInput(context, kStart2);
    bridging.shift = wholeInput(context, kOffset, 0, -kMostShift, kMostShift);
    bridging.divisions =
        static_cast<std::uint32_t>(countInput(context, kDivisions, 1, kMostDivisions, 0));
    bridging.smoothingAngle = context.number(kSmoothingAngle, kUsualAngle);
    const bool isCurved = context.number(kCurveType, 0) != 0;
    const bool isTwisted = context.number(kTwist, 0) != 0;
    const bool isTapered = context.number(kTaper, 1) != 1;
    const bool isStraight = bridging.divisions == 0 || !(isCurved || isTwisted || isTapered);
    return computeOn(context, geometry::kEdgeComponents,
                     [&](const geometry::MeshData& mesh, const auto& edges) {
                         noteUnless(context, isStraight);
                         return geometry::bridgeEdges(mesh, edges, bridging);
                     });
}

} // namespace

constinit const NodeCompute kPolyBridgeEdge{
    .type = "polyBridgeEdge", .inputs = kInputs, .outputs = kOutputs, .compute = compute};

} // namespace host::nodes
