// polyMoveVertex, polyMoveEdge, polyMoveFace: components moved together, and each in a frame of its
// own.
#include "host/nodes/polygon/meshInputs.h"
#include "host/nodes/polygon/shape/polygonShapeTypes.h"
#include "host/nodes/polygon/workSpace.h"

#include "host/geometry/mesh/shape/moveComponents.h"
#include "host/math/rotation.h"

namespace host::nodes {
namespace {

using geometry::ComponentKind;
using geometry::ComponentMove;

constexpr auto kInputs = meshInputs(
    "inputMatrix", "worldSpace", "translateX", "translateY", "translateZ", "rotateX", "rotateY",
    "rotateZ", "scaleX", "scaleY", "scaleZ", "pivotX", "pivotY", "pivotZ", "localTranslateX",
    "localTranslateY", "localTranslateZ", "localDirectionX", "localDirectionY", "localDirectionZ",
    "localRotateX", "localRotateY", "localRotateZ", "localScaleX", "localScaleY", "localScaleZ",
    "random", "offset", "weight", "attraction");
constexpr std::array<std::string_view, 1> kOutputs{"output"};
enum Input : std::size_t {
    kMatrix = kFirstOwnInput,
    kWorldSpace,
    kTranslate,
    kRotate = kTranslate + 3,
    kScale = kRotate + 3,
    kPivot = kScale + 3,
    kLocalTranslate = kPivot + 3,
    kLocalDirection = kLocalTranslate + 3,
    kLocalRotate = kLocalDirection + 3,
    kLocalScale = kLocalRotate + 3,
    kRandom = kLocalScale + 3,
    kEnd = kRandom + 4
};
static_assert(kEnd == kInputs.size());

ComponentMove readMove(ComputeContext& context)
{
    ComponentMove move;
    const Matrix4 world = matrixOf(context.input(kMatrix));
    move.space = flagInput(context, kWorldSpace, false) ? world : Matrix4{};
    const Vec3d pivot = vectorInput(context, kPivot, {});
    move.common = translation(pivot * -1) * scaling(vectorInput(context, kScale, {1, 1, 1})) *
                  eulerRotation(vectorInput(context, kRotate, {}), RotationOrder::Xyz) *
                  translation(pivot + vectorInput(context, kTranslate, {}));
    move.localTranslate = vectorInput(context, kLocalTranslate, {});
    move.localDirection = vectorInput(context, kLocalDirection, {1, 0, 0});
    move.localRotate = vectorInput(context, kLocalRotate, {});
    move.localScale = vectorInput(context, kLocalScale, {1, 1, 1});
    return move;
}

/// Chance, offsets inside the face and the pull of gravity and magnets are left out.
bool hasMore(ComputeContext& context)
{
    bool has = false;
    for (std::size_t input = kRandom; input < kEnd; ++input) {
        has = context.number(input, 0) != 0 || has;
    }
    return has;
}

std::size_t countOf(const geometry::MeshTopology& topology, ComponentKind kind)
{
    return kind == ComponentKind::Vertex ? topology.vertexCount
           : kind == ComponentKind::Edge ? topology.edges.size()
                                         : topology.faceCount();
}

Expected<Value> moved(ComputeContext& context, ComponentKind kind, std::string_view prefix)
{
    const MeshTask task = takeMeshTask(context);
    const ComponentMove move = readMove(context);
    const bool isIncomplete = hasMore(context);
    if (!context.isComplete() || task.isIdle()) {
        return task.passed();
    }
    const auto components = namedComponents(task, prefix, countOf(*task.mesh->topology, kind));
    if (!components.has_value() || task.mesh->points == nullptr) {
        return meshResult(context, task, nullptr, Lack::Components);
    }
    if (!hasWayBack(move.space)) {
        return meshResult(context, task, nullptr);
    }
    if (isIncomplete) {
        context.noteUncomputed();
    }
    return Value(geometry::moveComponents(*task.mesh, kind, *components, move));
}

Expected<Value> computeVertices(ComputeContext& context)
{
    return moved(context, ComponentKind::Vertex, geometry::kVertexComponents);
}

Expected<Value> computeEdges(ComputeContext& context)
{
    return moved(context, ComponentKind::Edge, geometry::kEdgeComponents);
}

Expected<Value> computeFaces(ComputeContext& context)
{
    return moved(context, ComponentKind::Face, geometry::kFaceComponents);
}

} // namespace

constinit const NodeCompute kPolyMoveVertex{
    .type = "polyMoveVertex", .inputs = kInputs, .outputs = kOutputs, .compute = computeVertices};
constinit const NodeCompute kPolyMoveEdge{
    .type = "polyMoveEdge", .inputs = kInputs, .outputs = kOutputs, .compute = computeEdges};
constinit const NodeCompute kPolyMoveFace{
    .type = "polyMoveFace", .inputs = kInputs, .outputs = kOutputs, .compute = computeFaces};

} // namespace host::nodes
