// polyPoke: faces turned into triangles about points above their middles.
#include "host/nodes/polygon/topology/componentOperation.h"
#include "host/nodes/polygon/topology/polygonTopologyTypes.h"
#include "host/nodes/polygon/workSpace.h"

#include "host/geometry/mesh/edit/divideEdges.h"

namespace host::nodes {
namespace {

constexpr auto kInputs =
    meshInputs("inputMatrix", "worldSpace", "localTranslateX", "localTranslateY", "localTranslateZ",
               "translateX", "translateY", "translateZ");
constexpr std::array<std::string_view, 1> kOutputs{"output"};
enum Input : std::size_t {
    kMatrix = kFirstOwnInput,
    kWorldSpace,
    kLocalTranslate,
    kTranslate = kLocalTranslate + 3
};

Expected<Value> compute(ComputeContext& context)
{
    geometry::Poking poking;
    const Matrix4 toWorld = matrixOf(context.input(kMatrix));
    if (flagInput(context, kWorldSpace, false)) {
        poking.toSpace = toWorld;
    }
    poking.localTranslate = vectorInput(context, kLocalTranslate, {});
    poking.translate = vectorInput(context, kTranslate, {});
    return computeOn(
        context, geometry::kFaceComponents,
        inSpace(poking.toSpace, [&](const geometry::MeshData& mesh, const auto& faces) {
            return geometry::pokeFaces(mesh, faces, poking);
        }));
}

} // namespace

constinit const NodeCompute kPolyPoke{
    .type = "polyPoke", .inputs = kInputs, .outputs = kOutputs, .compute = compute};

} // namespace host::nodes
