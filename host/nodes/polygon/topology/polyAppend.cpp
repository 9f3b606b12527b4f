// polyAppend, polyAppendVertex: a face added to a mesh.
#include "host/nodes/polygon/meshInputs.h"
#include "host/nodes/polygon/topology/polygonTopologyTypes.h"

#include "host/geometry/mesh/edit/appendFace.h"

namespace host::nodes {
namespace {

using geometry::FaceStep;

constexpr auto kInputs = meshInputs("desc", "vtxx", "vtxy", "vtxz", "texture", "subdivision");
enum Position : std::size_t {
    kSteps = kFirstOwnInput,
    kPointX,
    kPointY,
    kPointZ,
    kTexture,
    kSubdivision
};
constexpr std::array<std::string_view, 1> kOutputs{"output"};
/// More corners than any face needs; beyond, nothing is added.
constexpr std::size_t kMostSteps = 1U << 20;

/// The numbers of a multi, wherever its elements are stored.
std::vector<double> elements(ComputeContext& context, std::size_t position)
{
    std::vector<double> numbers;
    for (const std::int32_t index : context.elementIndices(position)) {
        numbers.push_back(context.element(position, index).number());
    }
    return numbers;
}

std::vector<Vec3f> newPoints(ComputeContext& context)
{
    std::vector<Vec3f> points;
    for (const std::int32_t index : context.elementIndices(kPointX)) {
        points.push_back(toFloat({context.element(kPointX, index).number(),
                                  context.element(kPointY, index).number(),
                                  context.element(kPointZ, index).number()}));
    }
    return points;
}

/// Vertices by number, and -1 for the next of the new points.
FaceStep vertexStep(double number)
{
    FaceStep step;
    step.kind = number >= 0 ? FaceStep::Kind::Vertex : FaceStep::Kind::NewPoint;
    step.number = number >= 0 ? static_cast<std::uint32_t>(number) : 0;
    return step;
}

/// Edges by number above -2147483648; numbers from 0 on stand for new points.
FaceStep edgeStep(double number)
{
    constexpr double kFirstEdge = -2147483648.0;
    FaceStep step;
    step.kind = number < 0 ? FaceStep::Kind::Edge : FaceStep::Kind::NewPoint;
    step.number = number < 0 ? static_cast<std::uint32_t>(number - kFirstEdge) : 0;
    return step;
}

/// Null where there are fewer new points than steps to them.
template<FaceStep (*stepOf)(double)>
SharedMesh append(const geometry::MeshData& mesh, const std::vector<double>& numbers,
                  const std::vector<Vec3f>& points, geometry::FaceTexture texture)
{
    constexpr double kMost = 2147483648.0;
    std::vector<FaceStep> steps;
    std::size_t nextPoint = 0;
    for (const double number : numbers) {
        if (!(number >= -kMost && number < kMost)) {
            return nullptr;
        }
        steps.push_back(stepOf(number));
        if (steps.back().kind == FaceStep::Kind::NewPoint) {
            if (nextPoint == points.size()) {
                return nullptr;
            }
            steps.back().point = points[nextPoint++];
        }
    }
    return appendFace(mesh, steps, texture);
}

template<FaceStep (*stepOf)(double)>
Expected<Value> compute(ComputeContext& context)
{
    const std::vector<double> numbers = elements(context, kSteps);
    const std::vector<Vec3f> points = newPoints(context);
    const auto texture = static_cast<geometry::FaceTexture>(wholeInput(context, kTexture, 0, 0, 2));
    const bool dividesEdges = context.number(kSubdivision, 1) > 1;
    const MeshTask task = takeMeshTask(context);
    if (!context.isComplete() || task.isIdle() || numbers.empty()) {
        return task.passed();
    }
    const bool canDo = !dividesEdges && numbers.size() <= kMostSteps;
    return meshResult(context, task,
                      canDo ? append<stepOf>(*task.mesh, numbers, points, texture) : nullptr);
}

} // namespace

constinit const NodeCompute kPolyAppend{
    .type = "polyAppend", .inputs = kInputs, .outputs = kOutputs, .compute = compute<edgeStep>};
constinit const NodeCompute kPolyAppendVertex{.type = "polyAppendVertex",
                                              .inputs = kInputs,
                                              .outputs = kOutputs,
                                              .compute = compute<vertexStep>};

} // namespace host::nodes
