// polyCut: faces cut along a plane.
#include "host/nodes/polygon/topology/componentOperation.h"
#include "host/nodes/polygon/topology/polygonTopologyTypes.h"
#include "host/nodes/polygon/workSpace.h"

#include "host/geometry/mesh/edit/cutFaces.h"
#include "host/math/rotation.h"

namespace host::nodes {
namespace {

using geometry::MeshData;
using Numbers = std::vector<std::uint32_t>;

constexpr auto kInputs = meshInputs("inputMatrix", "cutPlaneCenterX", "cutPlaneCenterY",
                                    "cutPlaneCenterZ", "cutPlaneRotateX", "cutPlaneRotateY",
                                    "cutPlaneRotateZ", "deleteFaces", "extractFaces");
enum Position : std::size_t {
    kMatrix = kFirstOwnInput,
    kCenter,
    kRotate = kCenter + 3,
    kDeleteFaces = kRotate + 3,
    kExtractFaces
};
constexpr std::array<std::string_view, 1> kOutputs{"output"};

/// The plane stands in the world whatever the node's own space; unturned it faces along z.
geometry::CutPlane takePlane(ComputeContext& context)
{
    geometry::CutPlane plane;
    plane.toSpace = matrixOf(context.input(kMatrix));
    plane.point = vectorInput(context, kCenter, {});
    plane.normal = normalized(transformVector(
        {0, 0, 1}, eulerRotation(vectorInput(context, kRotate, {}), RotationOrder::Xyz)));
    return plane;
}

Expected<Value> compute(ComputeContext& context)
{
    const geometry::CutPlane plane = takePlane(context);
    const bool deletes = flagInput(context, kDeleteFaces, false);
    const bool extracts = flagInput(context, kExtractFaces, false) && !deletes;
    return computeOn(context, geometry::kFaceComponents,
                     inSpace(plane.toSpace, [&](const MeshData& mesh, const Numbers& faces) {
                         noteUnless(context, !extracts); // the parts stay joined
                         return deletes ? keepBehind(mesh, faces, plane).mesh
                                        : cutFaces(mesh, faces, plane).mesh;
                     }));
}

} // namespace

constinit const NodeCompute kPolyCut{
    .type = "polyCut", .inputs = kInputs, .outputs = kOutputs, .compute = compute};

} // namespace host::nodes
