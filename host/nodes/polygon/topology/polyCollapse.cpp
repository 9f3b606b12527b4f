// polyCollapseEdge, polyCollapseF: edges and faces drawn together into points.
#include "host/nodes/polygon/topology/componentOperation.h"
#include "host/nodes/polygon/topology/polygonTopologyTypes.h"

#include "host/geometry/mesh/edit/joinEdges.h"
#include "host/geometry/mesh/polygon.h"

#include <algorithm>

namespace host::nodes {
namespace {

using geometry::MeshData;
using Numbers = std::vector<std::uint32_t>;

constexpr auto kEdgeInputs = meshInputs();
constexpr auto kFaceInputs = meshInputs("useAreaThreshold", "areaThreshold");
enum FaceInput : std::size_t { kUsesThreshold = kFirstOwnInput, kThreshold };
constexpr std::array<std::string_view, 1> kOutputs{"output"};

Expected<Value> computeEdges(ComputeContext& context)
{
    return computeOn(context, geometry::kEdgeComponents, geometry::collapseEdges);
}

double areaOf(const MeshData& mesh, std::uint32_t face)
{
    const geometry::MeshTopology& topology = *mesh.topology;
    std::vector<Vec3d> points;
    const std::uint32_t loop = topology.firstLoop(face);
    for (std::uint32_t corner = topology.loopStart[loop]; corner < topology.loopStart[loop + 1];
         ++corner) {
        points.push_back(toDouble((*mesh.points)[topology.cornerVertex(corner)]));
    }
    return length(geometry::areaVector(points));
}

Expected<Value> computeFaces(ComputeContext& context)
{
    const bool usesThreshold = flagInput(context, kUsesThreshold, false);
    const double threshold = context.number(kThreshold, 0.1);
    return computeOn(context, geometry::kFaceComponents, [&](const MeshData& mesh, Numbers faces) {
        const auto isLarge = [&](std::uint32_t face) {
            return usesThreshold && !(areaOf(mesh, face) <= threshold);
        };
        faces.erase(std::remove_if(faces.begin(), faces.end(), isLarge), faces.end());
        return collapseFaces(mesh, faces);
    });
}

} // namespace

constinit const NodeCompute kPolyCollapseEdge{.type = "polyCollapseEdge",
                                              .inputs = kEdgeInputs,
                                              .outputs = kOutputs,
                                              .compute = computeEdges};
constinit const NodeCompute kPolyCollapseF{
    .type = "polyCollapseF", .inputs = kFaceInputs, .outputs = kOutputs, .compute = computeFaces};

} // namespace host::nodes
