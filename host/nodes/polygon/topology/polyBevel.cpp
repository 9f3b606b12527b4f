// polyBevel, polyBevel2, polyBevel3: edges replaced by strips of faces. Bevels that keep the edge
// (chamfer off) are left out; the mitering is the usual one, and roundness is the depth of a
// circle.
#include "host/nodes/polygon/topology/componentOperation.h"
#include "host/nodes/polygon/topology/polygonTopologyTypes.h"
#include "host/nodes/polygon/workSpace.h"

#include "host/geometry/mesh/edit/bevelEdges.h"

#include <numbers>

namespace host::nodes {
namespace {

constexpr auto kInputs =
    meshInputs("inputMatrix", "worldSpace", "offsetAsFraction", "fraction", "offset", "segments",
               "depth", "chamfer", "autoFit", "smoothingAngle", "mitering");
constexpr std::array<std::string_view, 1> kOutputs{"output"};
enum Input : std::size_t {
    kMatrix = kFirstOwnInput,
    kWorldSpace,
    kAsFraction,
    kFraction,
    kOffset,
    kSegments,
    kDepth,
    kChamfer,
    kAutoFit,
    kSmoothingAngle,
    kMitering
};

constexpr std::int32_t kMostSegments = 1000;

geometry::Beveling readBeveling(ComputeContext& context, bool hasFractionOfItsOwn)
{
    constexpr double kUsualOffset = 0.2;
    constexpr double kUsualFraction = 0.5;
    geometry::Beveling beveling;
    const Matrix4 toWorld = matrixOf(context.input(kMatrix));
    if (flagInput(context, kWorldSpace, false)) {
        beveling.toSpace = toWorld;
    }
    beveling.isFraction = flagInput(context, kAsFraction, false);
    const double offset = context.number(kOffset, kUsualOffset);
    const double fraction = context.number(kFraction, kUsualFraction);
    beveling.offset = beveling.isFraction && hasFractionOfItsOwn ? fraction : offset;
    beveling.isFitted = flagInput(context, kAutoFit, true);
    beveling.segments =
        static_cast<std::uint32_t>(countInput(context, kSegments, 1, kMostSegments));
    beveling.depth = context.number(kDepth, 1);
    beveling.smoothingAngle = context.number(kSmoothingAngle, 0) * std::numbers::pi / 180;
    return beveling;
}

/// `hasFractionOfItsOwn`: a fraction is in an attribute of its own, not in the offset's.
template<bool hasFractionOfItsOwn>
Expected<Value> compute(ComputeContext& context)
{
    const geometry::Beveling beveling = readBeveling(context, hasFractionOfItsOwn);
    const bool keepsEdge = !flagInput(context, kChamfer, true);
    const bool isUsualMiter = context.number(kMitering, 0) == 0;
    bool isExact = true;
    if (keepsEdge) {
        const MeshTask task = takeMeshTask(context);
        return !context.isComplete() || task.isIdle()
                   ? task.passed()
                   : meshResult(context, task, nullptr, Lack::Setting);
    }
    auto result =
        computeOn(context, geometry::kEdgeComponents,
                  inSpace(beveling.toSpace, [&](const geometry::MeshData& mesh, const auto& edges) {
                      geometry::Beveled beveled = geometry::bevelEdges(mesh, edges, beveling);
                      isExact = isUsualMiter && beveled.isExact;
                      return beveled.mesh;
                  }));
    if (!isExact) {
        context.noteLack(Lack::Approximate);
    }
    return result;
}

} // namespace

constinit const NodeCompute kPolyBevel{
    .type = "polyBevel", .inputs = kInputs, .outputs = kOutputs, .compute = compute<false>};
constinit const NodeCompute kPolyBevel2{
    .type = "polyBevel2", .inputs = kInputs, .outputs = kOutputs, .compute = compute<true>};
constinit const NodeCompute kPolyBevel3{
    .type = "polyBevel3", .inputs = kInputs, .outputs = kOutputs, .compute = compute<true>};

} // namespace host::nodes
