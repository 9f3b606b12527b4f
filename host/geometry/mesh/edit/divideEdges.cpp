#include "host/geometry/mesh/edit/divideEdges.h"

#include "host/geometry/mesh/edit/MeshCutter.h"
#include "host/geometry/mesh/edit/faceFrame.h"
#include "host/geometry/mesh/edit/subdivideFaces.h"

namespace host::geometry {

std::shared_ptr<const MeshData>
divideEdges(const MeshData& mesh, std::span<const std::uint32_t> edges, std::uint32_t divisions)
{
    if (edges.size() * std::size_t{divisions} > kMaxEdgeVertices) {
        return nullptr;
    }
    MeshCutter cutter(mesh);
    for (const std::uint32_t edge : edges) {
        std::uint32_t rest = edge;
        for (std::uint32_t left = divisions; left >= 1; --left) {
            cutter.splitEdge(rest, 1.0 / (left + 1));
            rest = cutter.lastEdge();
        }
    }
    return cutter.finish(0);
}

std::shared_ptr<const MeshData>
pokeFaces(const MeshData& mesh, std::span<const std::uint32_t> faces, const Poking& poking)
{
    const auto fans = fanFaces(mesh, faces);
    if (fans == nullptr || fans->points == nullptr) {
        return nullptr;
    }
    const MeshTopology& topology = *mesh.topology;
    const std::vector<Vec3d> before = pointsInSpace(mesh, poking.toSpace);
    const Matrix4 back = inverse(poking.toSpace);
    std::vector<Vec3f> points = *fans->points;
    std::size_t point = before.size();
    for (const std::uint32_t face : faces) {
        if (topology.firstLoop(face + 1) - topology.firstLoop(face) == 1 && point < points.size()) {
            const LocalFrame frame = faceFrame(topology, before, face);
            const Vec3d place = frame.toSpace(poking.localTranslate) + poking.translate;
            points[point++] = toFloat(transformPoint(place, back));
        }
    }
    auto result = std::make_shared<MeshData>(*fans);
    result->points = std::make_shared<const std::vector<Vec3f>>(std::move(points));
    return result;
}

} // namespace host::geometry
