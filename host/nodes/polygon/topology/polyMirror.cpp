// polyMirror: faces joined by their mirror images.
#include "host/nodes/polygon/topology/componentOperation.h"
#include "host/nodes/polygon/topology/polygonTopologyTypes.h"
#include "host/nodes/polygon/workSpace.h"

#include "host/geometry/mesh/edit/cutFaces.h"
#include "host/geometry/mesh/edit/mirrorFaces.h"
#include "host/math/rotation.h"

#include <numbers>

namespace host::nodes {
namespace {

using geometry::MeshData;
using Numbers = std::vector<std::uint32_t>;

constexpr auto kInputs = meshInputs(
    "inputMatrix", "worldSpace", "pivotX", "pivotY", "pivotZ", "mirrorPlaneRotateX",
    "mirrorPlaneRotateY", "mirrorPlaneRotateZ", "direction", "axis", "axisDirection", "cutMesh",
    "mergeMode", "mergeThreshold", "mergeThresholdType", "smoothingAngle", "flipUVs");
enum Position : std::size_t {
    kMatrix = kFirstOwnInput,
    kWorldSpace,
    kPivot,
    kPlaneRotate = kPivot + 3,
    kDirection = kPlaneRotate + 3,
    kAxis,
    kAxisDirection,
    kCutMesh,
    kMergeMode,
    kThreshold,
    kThresholdType,
    kSmoothingAngle,
    kFlipUvs
};
constexpr std::array<std::string_view, 3> kOutputs{"output", "firstNewFace", "lastNewFace"};

/// The numbers of the attribute mergeMode.
enum MergeMode : std::int32_t { kNoMerging = 0, kMergeBorder = 1, kBridgeBorder = 2, kApart = 3 };

struct Request {
    geometry::Mirroring mirroring;
    bool cuts = false;
    std::int32_t mergeMode = kMergeBorder;
    bool flipsUvs = false; ///< of the images; not carried out
};

/// To where the images come. Nodes of old scenes tell axis and side by one number: +x, -x, +y, ...
Vec3d mirrorNormal(ComputeContext& context)
{
    constexpr std::array<Vec3d, 3> kAxes{{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};
    const std::int32_t direction = wholeInput(context, kDirection, 0, 0, 5);
    const std::int32_t axis = wholeInput(context, kAxis, 0, 0, 2);
    const bool isForward = wholeInput(context, kAxisDirection, 1, 0, 1) == 1;
    const Matrix4 rotation =
        eulerRotation(vectorInput(context, kPlaneRotate, {}), RotationOrder::Xyz);
    if (direction > 0) {
        return kAxes[static_cast<std::size_t>(direction / 2)] * (direction % 2 == 0 ? 1.0 : -1.0);
    }
    const Vec3d along = kAxes[static_cast<std::size_t>(axis)] * (isForward ? 1.0 : -1.0);
    return normalized(transformVector(along, rotation));
}

Request takeRequest(ComputeContext& context)
{
    constexpr double kDegree = std::numbers::pi / 180;
    Request request;
    geometry::Mirroring& mirroring = request.mirroring;
    const Value matrix = context.input(kMatrix);
    if (flagInput(context, kWorldSpace, false)) {
        mirroring.toSpace = matrixOf(matrix);
    }
    mirroring.point = vectorInput(context, kPivot, {});
    mirroring.normal = mirrorNormal(context);
    request.cuts = flagInput(context, kCutMesh, false);
    request.mergeMode = wholeInput(context, kMergeMode, kMergeBorder, kNoMerging, kApart);
    request.flipsUvs = flagInput(context, kFlipUvs, false);
    mirroring.mergesBorder = request.mergeMode == kMergeBorder;
    mirroring.threshold = context.number(kThreshold, 0.001);
    mirroring.isThresholdAutomatic = context.number(kThresholdType, 0) == 0;
    mirroring.smoothingAngle = context.number(kSmoothingAngle, 30) * kDegree;
    return request;
}

/// The mesh of which images are made, and the faces that have one.
struct Original {
    SharedMesh mesh;
    Numbers faces;
};

/// What lies on the side of the plane to which no images come; all of it where nothing does.
Original cutOriginal(const SharedMesh& mesh, const Numbers& faces,
                     const geometry::Mirroring& mirroring)
{
    const geometry::CutPlane plane{mirroring.toSpace, mirroring.point, mirroring.normal};
    geometry::KeptBehind kept = geometry::keepBehind(*mesh, faces, plane);
    return kept.faces.empty() ? Original{mesh, faces}
                              : Original{std::move(kept.mesh), std::move(kept.faces)};
}

Expected<Value> compute(ComputeContext& context)
{
    const Request request = takeRequest(context);
    const MeshTask task = takeMeshTask(context);
    if (!context.isComplete() || task.isIdle()) {
        return context.output() == 0 ? task.passed() : Value();
    }
    const auto faces = namedComponents(task, geometry::kFaceComponents);
    if (!faces) {
        return context.output() == 0 ? meshResult(context, task, nullptr, Lack::Components)
                                     : Value();
    }
    if (!hasWayBack(request.mirroring.toSpace)) {
        return context.output() == 0 ? meshResult(context, task, nullptr) : Value();
    }
    const Original original = request.cuts ? cutOriginal(task.mesh, *faces, request.mirroring)
                                           : Original{task.mesh, *faces};
    const std::uint32_t firstNew = original.mesh->topology->faceCount();
    if (context.output() == 1) {
        return Value(static_cast<double>(firstNew));
    }
    if (context.output() == 2) {
        return Value(static_cast<double>(firstNew) + static_cast<double>(original.faces.size()) -
                     1);
    }
    if (request.mergeMode == kBridgeBorder) {
        context.noteLack(Lack::Setting); // the faces between the borders are missing
    } else if (request.flipsUvs) {
        context.noteLack(Lack::Textures);
    }
    return meshResult(context, task,
                      mirrorFaces(*original.mesh, original.faces, request.mirroring));
}

} // namespace

constinit const NodeCompute kPolyMirror{
    .type = "polyMirror", .inputs = kInputs, .outputs = kOutputs, .compute = compute};

} // namespace host::nodes
