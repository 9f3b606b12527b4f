// polyBoolOp, polyCBoolOp: union, difference and intersection of solids, as stand-ins.
//
// Where surfaces cross they would have to be cut, exactly and with numbers that are not documented.
// Here a union is its parts, whole: seen from outside that is the same. A difference or an
// intersection is its first operand.
#include "host/nodes/polygon/meshInputs.h"
#include "host/nodes/polygon/topology/polygonTopologyTypes.h"

#include "host/geometry/mesh/edit/uniteMeshes.h"

namespace host::nodes {
namespace {

constexpr std::array<std::string_view, 4> kInputs{"inputPoly", "inputMat", "operation",
                                                  "nodeState"};
enum Position : std::size_t { kPoly, kMatrix, kOperation, kState };
constexpr std::array<std::string_view, 1> kOutputs{"output"};

Expected<Value> compute(ComputeContext& context)
{
    constexpr double kUnion = 1;
    std::vector<SharedMesh> meshes;
    std::vector<geometry::UnitedMesh> parts;
    for (const std::int32_t index : context.elementIndices(kPoly)) {
        const auto mesh = context.element(kPoly, index).data<geometry::MeshData>();
        const Matrix4 matrix = matrixOf(context.element(kMatrix, index));
        if (mesh != nullptr) {
            meshes.push_back(mesh);
            parts.push_back({mesh.get(), matrix});
        }
    }
    const bool isUnion = context.number(kOperation, kUnion) == kUnion;
    const bool hasNoEffect = context.number(kState, 0) == 1;
    if (!context.isComplete() || parts.empty()) {
        return Value();
    }
    if (hasNoEffect) {
        return Value(meshes.front());
    }
    if (parts.size() > 1) {
        context.noteUncomputed();
    }
    if (!isUnion) {
        parts.resize(1);
    }
    const SharedMesh stood = geometry::uniteMeshes(parts, geometry::UvSetMerging::ByName);
    return Value(stood != nullptr ? stood : meshes.front());
}

} // namespace

constinit const NodeCompute kPolyBoolOp{
    .type = "polyBoolOp", .inputs = kInputs, .outputs = kOutputs, .compute = compute};
constinit const NodeCompute kPolyCBoolOp{
    .type = "polyCBoolOp", .inputs = kInputs, .outputs = kOutputs, .compute = compute};

} // namespace host::nodes
