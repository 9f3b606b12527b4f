// polySmoothFace, polySmooth, polySmoothProxy: faces made smooth by subdivision.
#include "host/nodes/polygon/meshInputs.h"
#include "host/nodes/polygon/shape/polygonShapeTypes.h"
#include "host/nodes/polygon/shape/smoothingRules.h"

#include "host/geometry/mesh/shape/smoothFaces.h"
#include "host/geometry/mesh/shape/smoothMesh.h"

#include <algorithm>

namespace host::nodes {
namespace {

using geometry::CreaseRule;
using geometry::SmoothingRules;
using geometry::UvRule;

constexpr auto kInputs =
    meshInputs("method", "divisions", "exponentialLevel", "smoothness", "subdivisionType",
               "continuity", "smoothUVs", "keepBorder", "keepSelectionBorder", "keepHardEdge",
               "propagateEdgeHardness", "keepMapBorders", "boundaryRule", "useOsdBoundaryMethods",
               "osdVertBoundary", "osdFvarBoundary", "osdCreaseMethod", "osdSmoothTriangles");
constexpr std::array<std::string_view, 1> kOutputs{"output"};
enum Input : std::size_t {
    kMethod = kFirstOwnInput,
    kDivisions,
    kProxyDivisions,
    kSmoothness,
    kType,
    kContinuity,
    kSmoothUvs,
    kKeepBorder,
    kKeepSelectionBorder,
    kKeepHardEdge,
    kPropagateHardness,
    kKeepMapBorders,
    kBoundaryRule,
    kHasOsdBoundaries,
    kOsdBorder,
    kOsdUvs,
    kOsdCreases,
    kOsdTriangles,
    kEnd
};
static_assert(kEnd == kInputs.size());

std::int32_t choice(ComputeContext& context, std::size_t position, std::int32_t fallback)
{
    constexpr std::int32_t kMost = 255;
    return wholeInput(context, position, fallback, 0, kMost);
}

SmoothingRules readRules(ComputeContext& context)
{
    SmoothingRules rules;
    const bool isOsd = choice(context, kType, 0) != 0;
    BorderSettings border;
    border.isOsd = isOsd;
    border.usesOsdBoundaryMethods = flagInput(context, kHasOsdBoundaries, true);
    border.osdVertBoundary = choice(context, kOsdBorder, 1);
    border.keepBorder = flagInput(context, kKeepBorder, true);
    border.boundaryRule = choice(context, kBoundaryRule, 1);
    const bool movesUvs = flagInput(context, kSmoothUvs, false);
    const std::int32_t mapBorders = choice(context, kKeepMapBorders, 1);
    const std::int32_t osdUvs = choice(context, kOsdUvs, 3);
    const double continuity = context.number(kContinuity, 1);
    rules.isSelectionBorderFixed = flagInput(context, kKeepSelectionBorder, true);
    rules.propagatesHardEdges = flagInput(context, kPropagateHardness, false);
    rules.creases =
        choice(context, kOsdCreases, 0) == 1 ? CreaseRule::Chaikin : CreaseRule::Uniform;
    const bool hasTriangles = flagInput(context, kOsdTriangles, false);
    const bool keepsHard = flagInput(context, kKeepHardEdge, false);
    rules.border = borderRule(border);
    rules.uvs = !movesUvs ? UvRule::Linear
                : isOsd   ? uvRuleOfFvarBoundary(osdUvs)
                          : uvRuleOfMapBorders(mapBorders);
    rules.hasSmoothTriangles = isOsd && hasTriangles;
    rules.keepsHardEdges = !isOsd && keepsHard;
    rules.continuity = isOsd ? 1 : std::clamp(continuity, 0.0, 1.0);
    return rules;
}

/// As many of the steps as the limits allow; tells where they are fewer.
SharedMesh smoothedWhole(ComputeContext& context, const MeshTask& task, std::uint32_t divisions,
                         const SmoothingRules& rules)
{
    const std::uint32_t possible = geometry::possibleDivisions(*task.mesh, divisions);
    if (possible < divisions) {
        context.noteLack(Lack::Input);
    }
    return geometry::smoothMesh(*task.mesh, possible, rules);
}

/// All faces of the mesh, smoothed as one, or some.
SharedMesh smoothed(ComputeContext& context, const MeshTask& task,
                    std::span<const std::uint32_t> faces, std::uint32_t divisions,
                    const SmoothingRules& rules)
{
    if (faces.size() == task.mesh->topology->faceCount()) {
        return smoothedWhole(context, task, divisions, rules);
    }
    const std::uint32_t possible = geometry::possibleDivisions(*task.mesh, faces, divisions);
    if (possible < divisions) {
        context.noteLack(Lack::Input);
    }
    return geometry::smoothFaces(*task.mesh, faces, possible, rules);
}

/// The growth of faces by a constant number per edge (the linear method) is not carried out.
Expected<Value> compute(ComputeContext& context, std::size_t divisionsInput, bool isWhole)
{
    const MeshTask task = takeMeshTask(context);
    const bool isLinear = choice(context, kMethod, 0) == 1;
    const auto divisions = static_cast<std::uint32_t>(choice(context, divisionsInput, 1));
    const SmoothingRules rules = readRules(context);
    if (!context.isComplete() || task.isIdle() || divisions == 0) {
        return task.passed();
    }
    if (isLinear) {
        return meshResult(context, task, nullptr, Lack::Setting);
    }
    if (isWhole) {
        return meshResult(context, task, smoothedWhole(context, task, divisions, rules));
    }
    const auto faces =
        namedComponents(task, geometry::kFaceComponents, task.mesh->topology->faceCount());
    if (!faces.has_value()) {
        return meshResult(context, task, nullptr, Lack::Components);
    }
    return faces->empty()
               ? task.passed()
               : meshResult(context, task, smoothed(context, task, *faces, divisions, rules));
}

Expected<Value> computeFaces(ComputeContext& context)
{
    return compute(context, kDivisions, false);
}

Expected<Value> computeSmooth(ComputeContext& context)
{
    return compute(context, kSmoothness, false);
}

Expected<Value> computeProxy(ComputeContext& context)
{
    return compute(context, kProxyDivisions, true);
}

} // namespace

constinit const NodeCompute kPolySmoothFace{
    .type = "polySmoothFace", .inputs = kInputs, .outputs = kOutputs, .compute = computeFaces};
constinit const NodeCompute kPolySmooth{
    .type = "polySmooth", .inputs = kInputs, .outputs = kOutputs, .compute = computeSmooth};
constinit const NodeCompute kPolySmoothProxy{
    .type = "polySmoothProxy", .inputs = kInputs, .outputs = kOutputs, .compute = computeProxy};

} // namespace host::nodes
