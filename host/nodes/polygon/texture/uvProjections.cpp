// polyPlanarProj, polyCylProj, polySphProj: texture coordinates by projection.
#include "host/nodes/polygon/texture/polygonTextureTypes.h"
#include "host/nodes/polygon/texture/uvInputs.h"

#include "host/geometry/mesh/texture/projectUvs.h"

#include <numbers>

namespace host::nodes {
namespace {

using geometry::UvProjection;
using geometry::UvProjectionKind;

template<class... Sizes>
constexpr auto projectionInputs(const Sizes&... sizes)
{
    return meshInputs("inputMatrix", "worldSpace", "uvSetName", "projectionCenterX",
                      "projectionCenterY", "projectionCenterZ", "rotateX", "rotateY", "rotateZ",
                      "imageCenterX", "imageCenterY", "imageScaleU", "imageScaleV", "rotationAngle",
                      sizes...);
}

constexpr auto kPlanarInputs =
    projectionInputs("projectionWidth", "projectionHeight", "isPerspective");
constexpr auto kCylindricalInputs =
    projectionInputs("projectionHorizontalSweep", "projectionHeight");
constexpr auto kSphericalInputs =
    projectionInputs("projectionHorizontalSweep", "projectionVerticalSweep");
constexpr std::array<std::string_view, 1> kOutputs{"output"};
enum Position : std::size_t {
    kMatrix = kFirstOwnInput,
    kWorldSpace,
    kSetName,
    kCenter,
    kRotate = kCenter + 3,
    kImageCenterX = kRotate + 3,
    kImageCenterY,
    kImageScaleU,
    kImageScaleV,
    kRotationAngle,
    kWidth,
    kHeight,
    kIsPerspective
};
constexpr double kDegree = std::numbers::pi / 180;

/// Sweeps are numbers of degrees.
UvProjection readProjection(ComputeContext& context, UvProjectionKind kind)
{
    const bool isRound = kind != UvProjectionKind::Planar;
    const bool isSpherical = kind == UvProjectionKind::Spherical;
    UvProjection projection;
    projection.kind = kind;
    const Matrix4 world = matrixOf(context.input(kMatrix));
    projection.toSpace = flagInput(context, kWorldSpace, false) ? world : Matrix4{};
    projection.center = vectorInput(context, kCenter, {});
    projection.rotate = vectorInput(context, kRotate, {});
    projection.imageCenter = {static_cast<float>(context.number(kImageCenterX, 0.5)),
                              static_cast<float>(context.number(kImageCenterY, 0.5))};
    projection.imageScaleU = context.number(kImageScaleU, 1);
    projection.imageScaleV = context.number(kImageScaleV, 1);
    projection.imageAngle = context.number(kRotationAngle, 0);
    projection.width = context.number(kWidth, isRound ? 180 : 1) * (isRound ? kDegree : 1);
    projection.height = context.number(kHeight, isSpherical ? 90 : 1) * (isSpherical ? kDegree : 1);
    return projection;
}

/// Notes what is only believed: where the middle of a round projection is, and all perspective.
template<UvProjectionKind kind>
Expected<Value> compute(ComputeContext& context)
{
    constexpr bool kIsPlanar = kind == UvProjectionKind::Planar;
    const MeshTask task = takeMeshTask(context);
    const UvProjection projection = readProjection(context, kind);
    const std::string setName = textInput(context, kSetName);
    const bool isBelieved = !kIsPlanar || flagInput(context, kIsPerspective, false);
    return computeOnFaces(context, task, [&](const auto& faces) {
        if (isBelieved) {
            context.noteLack(Lack::Textures);
        }
        return meshResult(context, task,
                          geometry::projectUvs(*task.mesh, setName, faces, projection));
    });
}

} // namespace

constinit const NodeCompute kPolyPlanarProj{.type = "polyPlanarProj",
                                            .inputs = kPlanarInputs,
                                            .outputs = kOutputs,
                                            .compute = compute<UvProjectionKind::Planar>};
constinit const NodeCompute kPolyCylProj{.type = "polyCylProj",
                                         .inputs = kCylindricalInputs,
                                         .outputs = kOutputs,
                                         .compute = compute<UvProjectionKind::Cylindrical>};
constinit const NodeCompute kPolySphProj{.type = "polySphProj",
                                         .inputs = kSphericalInputs,
                                         .outputs = kOutputs,
                                         .compute = compute<UvProjectionKind::Spherical>};

} // namespace host::nodes
