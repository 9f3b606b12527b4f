// polyWedgeFace: faces swung about edges, or about an axis in the world.
#include "host/nodes/polygon/topology/componentOperation.h"
#include "host/nodes/polygon/topology/polygonTopologyTypes.h"
#include "host/nodes/polygon/workSpace.h"

#include "host/geometry/mesh/edit/wedgeFaces.h"

#include <algorithm>
#include <numbers>

namespace host::nodes {
namespace {

constexpr auto kInputs = meshInputs("inputMatrix", "worldSpace", "wedgeAngle", "divisions", "edge",
                                    "centerX", "centerY", "centerZ", "axisX", "axisY", "axisZ");
constexpr std::array<std::string_view, 1> kOutputs{"output"};
enum Input : std::size_t {
    kMatrix = kFirstOwnInput,
    kWorldSpace,
    kAngle,
    kDivisions,
    kEdge,
    kCenter,
    kAxis = kCenter + 3
};

constexpr std::int32_t kMostDivisions = 10000;

/// Nothing where an edge is named that the mesh does not have.
std::optional<std::vector<std::uint32_t>> readHinges(ComputeContext& context, std::size_t edgeCount)
{
    const NumericArray* const named = context.array(kEdge);
    std::vector<std::uint32_t> hinges;
    const auto runs = named != nullptr ? named->runs() : std::vector<NumericArray::Run>();
    for (const NumericArray::Run& run : runs) {
        for (std::uint32_t i = run.first; i - run.first < run.count; ++i) {
            const double edge = named->number(i, 0);
            if (!(edge >= 0 && edge < static_cast<double>(edgeCount))) {
                return std::nullopt;
            }
            hinges.push_back(static_cast<std::uint32_t>(edge));
        }
    }
    std::sort(hinges.begin(), hinges.end());
    hinges.erase(std::unique(hinges.begin(), hinges.end()), hinges.end());
    return hinges;
}

Expected<Value> compute(ComputeContext& context)
{
    constexpr double kUsualSmoothing = std::numbers::pi / 6;
    const MeshTask task = takeMeshTask(context);
    geometry::FaceWedge wedge;
    const Matrix4 toWorld = matrixOf(context.input(kMatrix));
    if (flagInput(context, kWorldSpace, false)) {
        wedge.toSpace = toWorld;
    }
    wedge.angle = context.number(kAngle, std::numbers::pi / 2);
    wedge.divisions =
        static_cast<std::uint32_t>(countInput(context, kDivisions, 1, kMostDivisions));
    wedge.center = vectorInput(context, kCenter, {});
    wedge.axis = vectorInput(context, kAxis, {});
    wedge.smoothingAngle = kUsualSmoothing;
    const std::size_t edgeCount = task.mesh != nullptr ? task.mesh->topology->edges.size() : 0;
    const auto hinges = readHinges(context, edgeCount);
    return computeOn(context, geometry::kFaceComponents,
                     inSpace(wedge.toSpace, [&](const geometry::MeshData& mesh, const auto& faces) {
                         if (!hinges) {
                             return SharedMesh();
                         }
                         wedge.hinges = *hinges;
                         return geometry::wedgeFaces(mesh, faces, wedge);
                     }));
}

} // namespace

constinit const NodeCompute kPolyWedgeFace{
    .type = "polyWedgeFace", .inputs = kInputs, .outputs = kOutputs, .compute = compute};

} // namespace host::nodes
