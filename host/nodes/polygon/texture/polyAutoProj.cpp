// polyAutoProj: texture coordinates by projection from several sides at once.
#include "host/nodes/polygon/texture/polygonTextureTypes.h"
#include "host/nodes/polygon/texture/uvInputs.h"
#include "host/nodes/polygon/texture/uvLayoutInputs.h"

#include "host/geometry/mesh/texture/projectFromPlanes.h"

namespace host::nodes {
namespace {

constexpr auto kInputs =
    meshInputs("inputMatrix", "worldSpace", "uvSetName", "rotateX", "rotateY", "rotateZ", "scaleX",
               "scaleY", "scaleZ", "planes", "projectBothDirections", "optimize", "layout",
               "scaleMode", "percentageSpace");
constexpr std::array<std::string_view, 1> kOutputs{"output"};
enum Position : std::size_t {
    kMatrix = kFirstOwnInput,
    kWorldSpace,
    kSetName,
    kRotate,
    kScale = kRotate + 3,
    kPlanes = kScale + 3,
    kBothDirections,
    kOptimize,
    kLayout,
    kScaleMode,
    kSpace
};

geometry::PlanesProjection readProjection(ComputeContext& context)
{
    geometry::PlanesProjection projection;
    const Matrix4 world = matrixOf(context.input(kMatrix));
    projection.toSpace = flagInput(context, kWorldSpace, false) ? world : Matrix4{};
    projection.rotate = vectorInput(context, kRotate, {});
    projection.scale = vectorInput(context, kScale, {1, 1, 1});
    const double planes = context.number(kPlanes, 6);
    projection.planes = planes > 0 && planes <= 12 ? static_cast<std::uint32_t>(planes) : 6;
    projection.mirrorsOpposites = flagInput(context, kBothDirections, false);
    projection.joinsSmall = context.number(kOptimize, 1) != 0;
    projection.layout = readLayout(context, kLayout, kScaleMode, kSpace);
    return projection;
}

/// How many coordinates come out, and their numbers, hold for plain solids; where they lie only
/// approximates.
Expected<Value> compute(ComputeContext& context)
{
    const MeshTask task = takeMeshTask(context);
    const geometry::PlanesProjection projection = readProjection(context);
    const std::string setName = textInput(context, kSetName);
    return computeOnFaces(context, task, [&](const auto& faces) {
        context.noteLack(Lack::Textures);
        return Value(geometry::projectFromPlanes(*task.mesh, setName, faces, projection));
    });
}

} // namespace

constinit const NodeCompute kPolyAutoProj{
    .type = "polyAutoProj", .inputs = kInputs, .outputs = kOutputs, .compute = compute};

} // namespace host::nodes
