// follicle: a place on a surface with its orientation, and the curve of the hair that grows there.
#include "host/geometry/hair/guidePoints.h"
#include "host/math/decompose.h"
#include "host/nodes/hair/hairNodes.h"
#include "host/nodes/hair/surfacePlace.h"
#include "host/nodes/matrixValue.h"

#include <array>
#include <optional>

namespace host::nodes {
namespace {

enum Input : std::size_t {
    kParameterU,
    kParameterV,
    kFlipDirection,
    kMapSetName,
    kInputSurface,
    kInputMesh,
    kInputWorldMatrix,
    kStartPosition,
    kStartPositionMatrix,
    kRestPosition,
    kSampleDensity,
    kFixedSegmentLength,
    kSegmentLength,
    kDegree,
    kCurrentPosition,
};
constexpr std::array<std::string_view, 15> kInputs{
    "parameterU",          "parameterV",   "flipDirection",    "mapSetName",
    "inputSurface",        "inputMesh",    "inputWorldMatrix", "startPosition",
    "startPositionMatrix", "restPosition", "sampleDensity",    "fixedSegmentLength",
    "segmentLength",       "degree",       "currentPosition"};

/// The vectors come first, three outputs each.
enum Vector : std::size_t { kTranslate, kRotate, kNormal, kTangent, kVectors };
constexpr std::size_t kValidUv = 3 * kVectors;
constexpr std::size_t kOutHair = kValidUv + 1;
constexpr std::array<std::string_view, 15> kOutputs{
    "outTranslateX", "outTranslateY", "outTranslateZ", "outRotateX", "outRotateY",
    "outRotateZ",    "outNormalX",    "outNormalY",    "outNormalZ", "outTangentX",
    "outTangentY",   "outTangentZ",   "validUv",       "outHair",    "outCurve"};

/// Where a follicle stands in the world: two unit vectors at right angles, and the place.
struct Stand {
    Vec3d position, normal, tangent;
};

/// A normal under a matrix: by the inverse transposed, so that it stays upright.
Vec3d transformNormal(const Vec3d& normal, const Matrix4& matrix)
{
    const Matrix4 back = inverse(matrix);
    const auto along = [&](std::size_t axis) {
        return normal.x * back.m[axis][0] + normal.y * back.m[axis][1] + normal.z * back.m[axis][2];
    };
    return normalized({along(0), along(1), along(2)});
}

/// The place on the surface; nothing without a surface or where it has no such place.
std::optional<Stand> findStand(ComputeContext& context)
{
    const double u = context.number(kParameterU, 0);
    const double v = context.number(kParameterV, 0);
    const auto setName = context.input(kMapSetName).data<std::string>();
    const auto surface = context.input(kInputSurface).data<geometry::SurfaceData>();
    const auto mesh = context.input(kInputMesh).data<geometry::MeshData>();
    const Matrix4 world = matrixOf(context.input(kInputWorldMatrix));
    const bool isFlipped = context.number(kFlipDirection, 0) != 0;
    if (!context.isComplete() || (surface == nullptr && mesh == nullptr)) {
        return std::nullopt;
    }
    const auto place = surface != nullptr
                           ? placeOnSurface(surface, u, v)
                           : placeOnMesh(mesh, setName != nullptr ? *setName : "", u, v);
    if (!place) {
        return std::nullopt;
    }
    Stand stand;
    stand.position = transformPoint(place->position, world);
    stand.normal = transformNormal(place->normal, world) * (isFlipped ? -1 : 1);
    const Vec3d along = transformVector(place->du, world);
    stand.tangent = normalized(along - stand.normal * dot(along, stand.normal));
    return stand;
}

/// The rotation that turns z into the normal and x into the tangent.
Vec3d rotationOf(const Stand& stand)
{
    const Vec3d side = cross(stand.normal, stand.tangent);
    Matrix4 frame;
    frame.m[0] = {stand.tangent.x, stand.tangent.y, stand.tangent.z, 0};
    frame.m[1] = {side.x, side.y, side.z, 0};
    frame.m[2] = {stand.normal.x, stand.normal.y, stand.normal.z, 0};
    return decompose(frame, RotationOrder::Xyz).rotate;
}

Value partOf(const Stand& stand, std::size_t output)
{
    const std::array<Vec3d, kVectors> vectors{stand.position,
                                              output / 3 == kRotate ? rotationOf(stand) : Vec3d{},
                                              stand.normal, stand.tangent};
    const Vec3d& vector = vectors[output / 3];
    return output % 3 == 0 ? vector.x : output % 3 == 1 ? vector.y : vector.z;
}

/// The points of the start curve, else of the rest curve, in world space: without a simulation the
/// hair stays where it starts. Without a curve a straight hair of one segment along the normal.
std::vector<Vec3d> hairPoints(ComputeContext& context)
{
    const auto start = context.input(kStartPosition).data<geometry::CurveData>();
    const Matrix4 matrix = matrixOf(context.input(kStartPositionMatrix));
    const auto rest = context.input(kRestPosition).data<geometry::CurveData>();
    const geometry::GuideSampling sampling{context.number(kSampleDensity, 1),
                                           context.number(kFixedSegmentLength, 0) != 0,
                                           context.number(kSegmentLength, 1)};
    if (start == nullptr && rest == nullptr) {
        const std::optional<Stand> stand = findStand(context);
        return stand ? std::vector<Vec3d>{stand->position,
                                          stand->position + stand->normal * sampling.segmentLength}
                     : std::vector<Vec3d>();
    }
    if (!context.isComplete()) {
        return {};
    }
    return start != nullptr ? geometry::guidePoints(*start, sampling, matrix)
                            : geometry::guidePoints(*rest, sampling, Matrix4());
}

Value curveOf(ComputeContext& context)
{
    const double degree = context.number(kDegree, 2);
    const auto current = context.input(kCurrentPosition).data<std::vector<Vec3d>>();
    const bool hasCurrent = current != nullptr && current->size() > 1;
    const std::vector<Vec3d> points = hasCurrent ? *current : hairPoints(context);
    const auto curve = geometry::curveThrough(points, degree);
    return curve != nullptr ? Value(curve) : Value();
}

Expected<Value> compute(ComputeContext& context)
{
    const std::size_t output = context.output();
    if (output < kValidUv) {
        const std::optional<Stand> stand = findStand(context);
        return stand ? partOf(*stand, output) : Value();
    }
    if (output == kValidUv) {
        return Value(findStand(context) ? 1.0 : 0.0);
    }
    if (output == kOutHair) {
        std::vector<Vec3d> points = hairPoints(context);
        return points.size() > 1 ? Value::of(std::move(points)) : Value();
    }
    return curveOf(context);
}

} // namespace

constinit const NodeCompute kFollicle{
    .type = "follicle", .inputs = kInputs, .outputs = kOutputs, .compute = compute};

} // namespace host::nodes
