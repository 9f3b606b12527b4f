// polyBoolOp, polyCBoolOp: union, difference and intersection of solids.
//
// Where solids cannot be cut (see geometry::booleanOf), there are stand-ins. A union is its parts,
// whole: seen from outside that is the same. A difference or an intersection is its first operand.
// Open meshes are never closed or cut (classification); vertices that are near each other are not
// merged (useThresholds), and colours are not kept (preserveColor).
#include "host/nodes/polygon/meshInputs.h"
#include "host/nodes/polygon/topology/polygonTopologyTypes.h"

#include "host/geometry/mesh/boolean/booleanOf.h"

namespace host::nodes {
namespace {

using geometry::BooleanOperation;

constexpr std::array<std::string_view, 4> kInputs{"inputPoly", "inputMat", "operation",
                                                  "nodeState"};
enum Position : std::size_t { kPoly, kMatrix, kOperation, kState };
constexpr std::array<std::string_view, 1> kOutputs{"output"};

struct Task {
    std::vector<SharedMesh> meshes;
    std::vector<geometry::UnitedMesh> parts;
    BooleanOperation operation = BooleanOperation::Union;
    bool hasNoEffect = false;
};

Task takeTask(ComputeContext& context)
{
    Task task;
    for (const std::int32_t index : context.elementIndices(kPoly)) {
        const auto mesh = context.element(kPoly, index).data<geometry::MeshData>();
        const Matrix4 matrix = matrixOf(context.element(kMatrix, index));
        if (mesh != nullptr) {
            task.meshes.push_back(mesh);
            task.parts.push_back({mesh.get(), matrix});
        }
    }
    const double operation = context.number(kOperation, 1);
    task.operation = operation == 2   ? BooleanOperation::Difference
                     : operation == 3 ? BooleanOperation::Intersection
                                      : BooleanOperation::Union;
    task.hasNoEffect = context.number(kState, 0) == 1;
    return task;
}

SharedMesh standIn(Task task)
{
    if (task.operation != BooleanOperation::Union) {
        task.parts.resize(1);
    }
    const SharedMesh stood = geometry::uniteMeshes(task.parts, geometry::UvSetMerging::ByName);
    return stood != nullptr ? stood : task.meshes.front();
}

Expected<Value> compute(ComputeContext& context)
{
    const Task task = takeTask(context);
    if (!context.isComplete() || task.parts.empty()) {
        return Value();
    }
    if (task.hasNoEffect) {
        return Value(task.meshes.front());
    }
    const SharedMesh result =
        geometry::booleanOf(task.parts, task.operation, geometry::UvSetMerging::ByName);
    if (result == nullptr) {
        context.noteLack(Lack::Input);
        return Value(standIn(task));
    }
    return Value(result);
}

} // namespace

constinit const NodeCompute kPolyBoolOp{
    .type = "polyBoolOp", .inputs = kInputs, .outputs = kOutputs, .compute = compute};
constinit const NodeCompute kPolyCBoolOp{
    .type = "polyCBoolOp", .inputs = kInputs, .outputs = kOutputs, .compute = compute};

} // namespace host::nodes
