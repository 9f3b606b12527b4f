#include "host/geometry/mesh/shape/averageVertices.h"

#include "host/geometry/mesh/edit/MeshLinks.h"
#include "host/geometry/mesh/shape/facePlanes.h"

#include <algorithm>
#include <vector>

namespace host::geometry {
namespace {

/// The mean over the neighbours of a vertex; what the vertex itself has where it has none.
Vec3d neighbourMean(const MeshTopology& topology, const NumberLists& edgesOf, std::uint32_t vertex,
                    std::span<const Vec3d> values)
{
    const auto edges = edgesOf.of(vertex);
    if (edges.empty()) {
        return values[vertex];
    }
    Vec3d sum;
    for (const std::uint32_t edge : edges) {
        const MeshEdge& ends = topology.edges[edge];
        sum = sum + values[ends.start == vertex ? ends.end : ends.start];
    }
    return sum * (1.0 / static_cast<double>(edges.size()));
}

} // namespace

std::shared_ptr<const MeshData> averageVertices(const MeshData& mesh,
                                                std::span<const std::uint32_t> vertices,
                                                std::int32_t steps, double alpha, double beta)
{
    const MeshTopology& topology = *mesh.topology;
    const NumberLists edgesOf = edgesOfVertices(topology);
    const std::vector<Vec3d> first = doublePoints(mesh);
    std::vector<Vec3d> points = first;
    std::vector<Vec3d> means = first;
    std::vector<Vec3d> excess(first.size());
    for (std::int32_t step = 0; step < std::min(steps, kMostAveragings); ++step) {
        for (const std::uint32_t vertex : vertices) {
            means[vertex] = neighbourMean(topology, edgesOf, vertex, points);
            const Vec3d held = first[vertex] * alpha + points[vertex] * (1 - alpha);
            excess[vertex] = means[vertex] - held;
        }
        for (const std::uint32_t vertex : vertices) {
            const Vec3d others = neighbourMean(topology, edgesOf, vertex, excess);
            points[vertex] = means[vertex] - (excess[vertex] * beta + others * (1 - beta));
        }
    }
    return withPoints(mesh, points);
}

} // namespace host::geometry
