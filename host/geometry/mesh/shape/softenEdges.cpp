#include "host/geometry/mesh/shape/softenEdges.h"

#include "host/geometry/mesh/edit/MeshLinks.h"
#include "host/geometry/mesh/shape/cornerNormals.h"
#include "host/geometry/mesh/shape/facePlanes.h"
#include "host/math/angle.h"

#include <algorithm>

namespace host::geometry {
namespace {

/// Between faces that differ by exactly the angle asked for an edge is soft, whatever the points'
/// single precision makes of it.
constexpr double kAngleTolerance = 1e-5;

double angleBetween(const Vec3d& a, const Vec3d& b)
{
    return angleOf(length(cross(a, b)), dot(a, b));
}

/// The faces of given edges, in one pass over the mesh.
class EdgeFaces {
public:
    EdgeFaces(const MeshTopology& topology, std::span<const std::uint32_t> edges)
    {
        std::vector<std::uint32_t> places(topology.edges.size(), kNone);
        for (std::size_t i = 0; i < edges.size(); ++i) {
            places[edges[i]] = static_cast<std::uint32_t>(i);
        }
        std::vector<std::uint32_t> owners;
        for (std::uint32_t face = 0; face < topology.faceCount(); ++face) {
            for (std::uint32_t corner = topology.firstCorner(face);
                 corner < topology.endCorner(face); ++corner) {
                const std::uint32_t place = places[edgeOf(topology.corners[corner])];
                if (place != kNone) {
                    owners.push_back(place);
                    m_faces.push_back(face);
                }
            }
        }
        m_uses = NumberLists(owners, static_cast<std::uint32_t>(edges.size()));
    }

    /// How many corners leave along the edge at a place of the list.
    std::size_t count(std::uint32_t place) const { return m_uses.of(place).size(); }

    /// The largest angle between neighbours among the faces of the edge; faces without an area have
    /// none.
    double angle(std::uint32_t place, LazyPlanes& planes) const
    {
        double largest = 0;
        const auto uses = m_uses.of(place);
        Vec3d last = planes.of(m_faces[uses[0]]).normal;
        for (std::size_t i = 1; i < uses.size(); ++i) {
            const Vec3d next = planes.of(m_faces[uses[i]]).normal;
            largest = std::max(largest, angleBetween(last, next));
            last = next;
        }
        return largest;
    }

private:
    std::vector<std::uint32_t> m_faces; ///< by use
    NumberLists m_uses;
};

/// The flags of edges that change.
struct FlagChange {
    std::uint32_t edge = 0;
    std::uint8_t flag = 0;
};

} // namespace

std::shared_ptr<const MeshData> softenEdges(const MeshData& mesh,
                                            std::span<const std::uint32_t> edges, double angle,
                                            const Matrix4& space)
{
    const MeshTopology& before = *mesh.topology;
    const EdgeFaces faces(before, edges);
    LazyPlanes planes(mesh, space);
    std::vector<FlagChange> changes;
    for (std::uint32_t place = 0; place < edges.size(); ++place) {
        if (faces.count(place) < 2) {
            continue;
        }
        const bool isSoft = angle > 0 && faces.angle(place, planes) <= angle + kAngleTolerance;
        const std::uint8_t flag = isSoft ? 1 : 0;
        if (before.edgeSmooth[edges[place]] != flag) {
            changes.push_back({edges[place], flag});
        }
    }
    auto result = std::make_shared<MeshData>(mesh);
    if (changes.empty()) {
        return result;
    }
    auto topology = std::make_shared<MeshTopology>(before);
    for (const FlagChange& change : changes) {
        topology->edgeSmooth[change.edge] = change.flag;
    }
    result->lockedNormals = lockedNormalsById(*topology, lockedNormalsOfCorners(mesh));
    result->topology = std::move(topology);
    return result;
}

} // namespace host::geometry
