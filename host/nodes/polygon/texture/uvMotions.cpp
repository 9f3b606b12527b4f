// polyMoveUV, polyMoveFacetUV, polyFlipUV, polyNormalizeUV: texture coordinates moved.
#include "host/nodes/polygon/texture/polygonTextureTypes.h"
#include "host/nodes/polygon/texture/uvInputs.h"

#include "host/geometry/mesh/texture/moveUvs.h"

namespace host::nodes {
namespace {

using geometry::MeshData;
using geometry::UvBounds;
using geometry::UvMotion;
using Ids = std::vector<std::uint32_t>;

constexpr std::size_t kSetName = kFirstOwnInput;
constexpr std::array<std::string_view, 1> kOutputs{"output"};

constexpr auto kMoveInputs = meshInputs("uvSetName", "pivotU", "pivotV", "scaleU", "scaleV",
                                        "rotationAngle", "translateU", "translateV", "random");
enum MovePosition : std::size_t {
    kPivotU = kSetName + 1,
    kPivotV,
    kScaleU,
    kScaleV,
    kAngle,
    kTranslateU,
    kTranslateV,
    kRandom
};

constexpr auto kFlipInputs =
    meshInputs("uvSetName", "flipType", "local", "usePivot", "pivotU", "pivotV");
enum FlipPosition : std::size_t {
    kFlipType = kSetName + 1,
    kIsLocal,
    kUsesPivot,
    kFlipPivotU,
    kFlipPivotV
};

constexpr auto kNormalizeInputs =
    meshInputs("uvSetName", "normalizeType", "preserveAspectRatio", "centerOnTile");
enum NormalizePosition : std::size_t { kNormalizeType = kSetName + 1, kKeepsRatio, kCentersOnTile };

/// Moves what the node names by a motion that is told the coordinates' box.
template<class MotionOf>
Value moved(ComputeContext& context, const MeshTask& task, const std::string& setName,
            const MotionOf& motionOf)
{
    return computeOnUvSet(context, task, setName, [&](const MeshData& mesh, std::size_t set) {
        const auto ids = namedUvs(task, set);
        if (!ids || ids->empty()) {
            return ids ? task.mesh : SharedMesh();
        }
        return geometry::moveUvs(mesh, set, *ids, motionOf(uvBounds(mesh.uvSets[set], *ids)));
    });
}

Expected<Value> move(ComputeContext& context)
{
    const MeshTask task = takeMeshTask(context);
    const std::string setName = textInput(context, kSetName);
    UvMotion motion;
    motion.pivotU = context.number(kPivotU, 0);
    motion.pivotV = context.number(kPivotV, 0);
    motion.scaleU = context.number(kScaleU, 1);
    motion.scaleV = context.number(kScaleV, 1);
    motion.angle = context.number(kAngle, 0);
    motion.translateU = context.number(kTranslateU, 0);
    motion.translateV = context.number(kTranslateV, 0);
    const bool isRandom = context.number(kRandom, 0) != 0;
    if (!context.isComplete() || task.isIdle()) {
        return task.passed();
    }
    if (isRandom) {
        context.noteLack(Lack::Textures); // chance cannot be known
    }
    return moved(context, task, setName, [&motion](const UvBounds&) { return motion; });
}

/// About the middle of what is flipped, of the unit square, or a pivot.
Expected<Value> flip(ComputeContext& context)
{
    const MeshTask task = takeMeshTask(context);
    const std::string setName = textInput(context, kSetName);
    const bool isVertical = context.number(kFlipType, 0) == 1;
    const bool isLocal = flagInput(context, kIsLocal, true);
    const bool usesPivot = flagInput(context, kUsesPivot, false);
    const double pivotU = context.number(kFlipPivotU, 0);
    const double pivotV = context.number(kFlipPivotV, 0);
    if (!context.isComplete() || task.isIdle()) {
        return task.passed();
    }
    return moved(context, task, setName, [&](const UvBounds& box) {
        UvMotion motion;
        motion.scaleU = isVertical ? 1 : -1;
        motion.scaleV = isVertical ? -1 : 1;
        motion.pivotU = usesPivot ? pivotU : isLocal ? (double{box.low.x} + box.high.x) / 2 : 0.5;
        motion.pivotV = usesPivot ? pivotV : isLocal ? (double{box.low.y} + box.high.y) / 2 : 0.5;
        return motion;
    });
}

/// All together; face by face, and on tiles, it is passed on.
Expected<Value> normalize(ComputeContext& context)
{
    constexpr double kCollective = 1;
    const MeshTask task = takeMeshTask(context);
    const std::string setName = textInput(context, kSetName);
    const bool isKnown = context.number(kNormalizeType, kCollective) == kCollective &&
                         !flagInput(context, kCentersOnTile, false);
    const bool keepsRatio = flagInput(context, kKeepsRatio, true);
    if (!context.isComplete() || task.isIdle()) {
        return task.passed();
    }
    if (!isKnown) {
        return meshResult(context, task, nullptr, Lack::Setting);
    }
    return moved(context, task, setName, [keepsRatio](const UvBounds& box) {
        return geometry::fitIntoUnit(box, keepsRatio, false);
    });
}

} // namespace

constinit const NodeCompute kPolyMoveUV{
    .type = "polyMoveUV", .inputs = kMoveInputs, .outputs = kOutputs, .compute = move};
constinit const NodeCompute kPolyFlipUV{
    .type = "polyFlipUV", .inputs = kFlipInputs, .outputs = kOutputs, .compute = flip};
constinit const NodeCompute kPolyNormalizeUV{.type = "polyNormalizeUV",
                                             .inputs = kNormalizeInputs,
                                             .outputs = kOutputs,
                                             .compute = normalize};

} // namespace host::nodes
