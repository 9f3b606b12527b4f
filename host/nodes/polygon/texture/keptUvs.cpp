// polyContourProj, polyMoveFacetUV, polyOptUvs, polyStraightenUVBorder, polyUVRectangle: texture
// coordinates moved in ways that are not known. They stay as they were, and nothing else changes;
// polyProj, which only carries a manipulator, changes nothing at all.
#include "host/nodes/polygon/meshInputs.h"
#include "host/nodes/polygon/texture/polygonTextureTypes.h"

namespace host::nodes {
namespace {

constexpr auto kInputs = meshInputs();
constexpr std::array<std::string_view, 1> kOutputs{"output"};

Expected<Value> keep(ComputeContext& context)
{
    const MeshTask task = takeMeshTask(context);
    return !context.isComplete() || task.isIdle()
               ? task.passed()
               : meshResult(context, task, nullptr, Lack::Textures);
}

Expected<Value> pass(ComputeContext& context)
{
    return takeMeshTask(context).passed();
}

constexpr NodeCompute row(std::string_view type, Expected<Value> (*compute)(ComputeContext&))
{
    return {.type = type, .inputs = kInputs, .outputs = kOutputs, .compute = compute};
}

} // namespace

constinit const NodeCompute kPolyContourProj = row("polyContourProj", keep);
constinit const NodeCompute kPolyMoveFacetUV = row("polyMoveFacetUV", keep);
constinit const NodeCompute kPolyOptUvs = row("polyOptUvs", keep);
constinit const NodeCompute kPolyProj = row("polyProj", pass);
constinit const NodeCompute kPolyStraightenUVBorder = row("polyStraightenUVBorder", keep);
constinit const NodeCompute kPolyUVRectangle = row("polyUVRectangle", keep);

} // namespace host::nodes
