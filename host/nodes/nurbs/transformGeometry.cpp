// transformGeometry: points times a matrix. Normals that a mesh has locked turn with them.
#include "host/nodes/matrixValue.h"
#include "host/nodes/nurbs/nurbsTypes.h"
#include "host/nodes/nurbs/splineInputs.h"

#include "host/geometry/mesh/MeshData.h"
#include "host/geometry/nurbs/transformSpline.h"

namespace host::nodes {
namespace {

using geometry::MeshData;

constexpr std::array<std::string_view, 4> kInputs{"inputGeometry", "transform", "invertTransform",
                                                  "nodeState"};
constexpr std::array<std::string_view, 1> kOutputs{"outputGeometry"};

using Vectors = std::vector<Vec3f>;

std::shared_ptr<const Vectors> movedPoints(const Vectors& points, const Matrix4& matrix)
{
    auto moved = std::make_shared<Vectors>();
    moved->reserve(points.size());
    for (const Vec3f& point : points) {
        moved->push_back(toFloat(transformPoint(toDouble(point), matrix)));
    }
    return moved;
}

/// Normals are rows of the transposed inverse; entries that say "not locked" stay.
std::shared_ptr<const Vectors> movedNormals(const Vectors& normals, const Matrix4& matrix)
{
    constexpr float kLargestComponent = 1e10F;
    const Matrix4 back = inverse(matrix);
    auto moved = std::make_shared<Vectors>();
    moved->reserve(normals.size());
    for (const Vec3f& normal : normals) {
        const auto& m = back.m;
        const Vec3d n = toDouble(normal);
        const Vec3d turned{m[0][0] * n.x + m[0][1] * n.y + m[0][2] * n.z,
                           m[1][0] * n.x + m[1][1] * n.y + m[1][2] * n.z,
                           m[2][0] * n.x + m[2][1] * n.y + m[2][2] * n.z};
        const bool isLocked = std::fabs(normal.x) < kLargestComponent;
        moved->push_back(isLocked ? toFloat(normalized(turned)) : normal);
    }
    return moved;
}

MeshData transformed(const MeshData& mesh, const Matrix4& matrix)
{
    MeshData moved = mesh;
    if (mesh.points != nullptr) {
        moved.points = movedPoints(*mesh.points, matrix);
    }
    if (mesh.lockedNormals != nullptr) {
        moved.lockedNormals = movedNormals(*mesh.lockedNormals, matrix);
    }
    return moved;
}

Expected<Value> compute(ComputeContext& context)
{
    const Value input = context.input(0);
    const Matrix4 given = matrixOf(context.input(1));
    const bool isInverted = flagInput(context, 2, false);
    const bool hasNoEffect = context.number(3, 0) == 1;
    if (!context.isComplete() || hasNoEffect) {
        return input;
    }
    const Matrix4 matrix = isInverted ? inverse(given) : given;
    if (const auto curve = input.data<geometry::CurveData>()) {
        return Value::of(geometry::transformed(*curve, matrix));
    }
    if (const auto surface = input.data<geometry::SurfaceData>()) {
        return Value::of(geometry::transformed(*surface, matrix));
    }
    if (const auto mesh = input.data<MeshData>()) {
        return Value::of(transformed(*mesh, matrix));
    }
    return input;
}

} // namespace

constinit const NodeCompute kTransformGeometry{
    .type = "transformGeometry", .inputs = kInputs, .outputs = kOutputs, .compute = compute};

} // namespace host::nodes
