// polyReduce: fewer faces for nearly the same shape. Which edges Maya gives up is not known, and it
// may keep faces of four: the result has as many faces as asked for, of three corners, and is told
// as an approximation. Symmetry and painted weights are left out.
#include "host/nodes/polygon/topology/componentOperation.h"
#include "host/nodes/polygon/topology/polygonTopologyTypes.h"

#include "host/geometry/mesh/edit/reduceMesh.h"

#include <algorithm>

namespace host::nodes {
namespace {

constexpr auto kInputs = meshInputs("percentage", "termination", "vertexCount", "triangleCount",
                                    "keepBorder", "keepHardEdge");
constexpr std::array<std::string_view, 1> kOutputs{"output"};
enum Input : std::size_t {
    kPercentage = kFirstOwnInput,
    kTermination,
    kVertexCount,
    kTriangleCount,
    kKeepBorder,
    kKeepHardEdge
};

/// What the reduction goes by; the numbers of the attribute termination.
enum class Termination : std::int32_t { Percentage = 0, Vertices = 1, Triangles = 2 };

/// A part of the triangles that faces have, or what the node names.
std::uint32_t trianglesLeft(const geometry::MeshData& mesh, const std::vector<std::uint32_t>& faces,
                            double percentage)
{
    double triangles = 0;
    for (const std::uint32_t face : faces) {
        triangles += mesh.topology->endCorner(face) - mesh.topology->firstCorner(face);
        triangles -= 2;
    }
    const double part = std::clamp(1 - percentage / 100, 0.0, 1.0);
    return static_cast<std::uint32_t>(std::clamp(triangles * part, 0.0, 4e9));
}

Expected<Value> compute(ComputeContext& context)
{
    constexpr std::int32_t kMost = 1 << 30;
    const double percentage = context.number(kPercentage, 0);
    const auto termination = static_cast<Termination>(wholeInput(context, kTermination, 0, 0, 2));
    const auto vertices =
        static_cast<std::uint32_t>(wholeInput(context, kVertexCount, 0, 0, kMost));
    const auto triangles =
        static_cast<std::uint32_t>(wholeInput(context, kTriangleCount, 0, 0, kMost));
    geometry::Reduction reduction;
    reduction.keepsBorders = flagInput(context, kKeepBorder, true);
    reduction.keepsHardEdges = flagInput(context, kKeepHardEdge, true);
    bool isReduced = false;
    auto result = computeOn(
        context, geometry::kFaceComponents, [&](const geometry::MeshData& mesh, const auto& faces) {
            isReduced = true;
            if (termination == Termination::Vertices) {
                reduction.vertices = vertices;
            } else {
                reduction.triangles = termination == Termination::Triangles
                                          ? triangles
                                          : trianglesLeft(mesh, faces, percentage);
            }
            return geometry::reduceMesh(mesh, faces, reduction);
        });
    if (isReduced) {
        context.noteLack(Lack::Approximate);
    }
    return result;
}

} // namespace

constinit const NodeCompute kPolyReduce{
    .type = "polyReduce", .inputs = kInputs, .outputs = kOutputs, .compute = compute};

} // namespace host::nodes
