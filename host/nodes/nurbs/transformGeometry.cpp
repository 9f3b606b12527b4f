// transformGeometry: points times a matrix. Normals that a mesh has locked turn with them, others
// can be locked as they were.
#include "host/nodes/matrixValue.h"
#include "host/nodes/nurbs/nurbsTypes.h"
#include "host/nodes/nurbs/splineInputs.h"

#include "host/geometry/mesh/shape/transformMesh.h"
#include "host/geometry/nurbs/transformSpline.h"

namespace host::nodes {
namespace {

using geometry::MeshData;

constexpr std::array<std::string_view, 5> kInputs{"inputGeometry", "transform", "invertTransform",
                                                  "nodeState", "freezeNormals"};
constexpr std::array<std::string_view, 1> kOutputs{"outputGeometry"};

Expected<Value> compute(ComputeContext& context)
{
    const Value input = context.input(0);
    const Matrix4 given = matrixOf(context.input(1));
    const bool isInverted = flagInput(context, 2, false);
    const bool hasNoEffect = context.number(3, 0) == 1;
    const auto freeze = static_cast<geometry::NormalFreeze>(wholeInput(context, 4, 0, 0, 2));
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
        return Value::of(geometry::transformed(*mesh, matrix, freeze));
    }
    return input;
}

} // namespace

constinit const NodeCompute kTransformGeometry{
    .type = "transformGeometry", .inputs = kInputs, .outputs = kOutputs, .compute = compute};

} // namespace host::nodes
