#include "host/geometry/mesh/edit/edgeSmoothness.h"

#include "host/geometry/mesh/edit/MeshLinks.h"
#include "host/geometry/mesh/edit/faceFrame.h"

#include "host/math/angle.h"

#include <algorithm>

namespace host::geometry {
namespace {

/// Equal angles computed two ways differ by less.
constexpr double kAngleTolerance = 1e-5;

/// The faces of an edge, as far as two go.
struct EdgeFaces {
    static constexpr std::uint32_t kMore = kNone - 1; ///< in place of a second face: three or more

    std::uint32_t first = kNone;
    std::uint32_t second = kNone;

    void add(std::uint32_t face)
    {
        if (first == kNone) {
            first = face;
        } else {
            second = second == kNone ? face : kMore;
        }
    }
    bool areTwo() const { return second != kNone && second != kMore; }
};

/// The normals of all faces, and the faces of all edges.
struct Neighbours {
    std::vector<Vec3d> normals;
    std::vector<EdgeFaces> faces;
};

Neighbours findNeighbours(const MeshData& mesh)
{
    const MeshTopology& topology = *mesh.topology;
    const auto pointAt = [&points = *mesh.points](std::uint32_t vertex) {
        return toDouble(points[vertex]);
    };
    Neighbours found;
    found.normals.reserve(topology.faceCount());
    found.faces.resize(topology.edges.size());
    for (std::uint32_t face = 0; face < topology.faceCount(); ++face) {
        found.normals.push_back(faceNormalOf(topology, pointAt, face));
        for (std::uint32_t corner = topology.firstCorner(face); corner < topology.endCorner(face);
             ++corner) {
            found.faces[edgeOf(topology.corners[corner])].add(face);
        }
    }
    return found;
}

bool isFlatEnough(const Neighbours& neighbours, std::uint32_t edge, double angle)
{
    const EdgeFaces& faces = neighbours.faces[edge];
    if (!faces.areTwo()) {
        return false;
    }
    const Vec3d& first = neighbours.normals[faces.first];
    const Vec3d& second = neighbours.normals[faces.second];
    const double between = angleOf(length(cross(first, second)), dot(first, second));
    return between <= angle + kAngleTolerance;
}

} // namespace

std::shared_ptr<const MeshData> withSmoothEdges(std::shared_ptr<const MeshData> mesh, double angle)
{
    const auto isMarked = [](std::uint8_t flag) { return flag == kSmoothByAngle; };
    if (mesh == nullptr || mesh->edgeSmooth == nullptr ||
        std::none_of(mesh->edgeSmooth->begin(), mesh->edgeSmooth->end(), isMarked)) {
        return mesh;
    }
    const Neighbours neighbours = findNeighbours(*mesh);
    EdgeFlags flags = *mesh->edgeSmooth;
    for (std::uint32_t edge = 0; edge < flags.size(); ++edge) {
        if (isMarked(flags[edge])) {
            flags[edge] = isFlatEnough(neighbours, edge, angle) ? 1 : 0;
        }
    }
    auto result = std::make_shared<MeshData>(*mesh);
    result->edgeSmooth = shareEdgeFlags(std::move(flags));
    return result;
}

} // namespace host::geometry
