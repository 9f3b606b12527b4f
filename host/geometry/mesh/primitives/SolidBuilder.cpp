#include "host/geometry/mesh/primitives/SolidBuilder.h"

#include "host/geometry/mesh/edit/EdgeTable.h"

namespace host::geometry {

std::uint32_t SolidBuilder::addPoint(const Vec3d& point)
{
    m_points.push_back(point);
    return pointCount() - 1;
}

std::uint32_t SolidBuilder::addEdge(std::uint32_t start, std::uint32_t end, bool isSmooth)
{
    m_topology.edges.push_back({start, end});
    m_edgeSmooth.push_back(isSmooth ? 1 : 0);
    return static_cast<std::uint32_t>(m_topology.edges.size() - 1);
}

std::uint32_t SolidBuilder::addUv(float u, float v)
{
    m_uvs.push_back({u, v});
    return uvCount() - 1;
}

void SolidBuilder::addForward(std::uint32_t edge, std::uint32_t uv)
{
    m_topology.corners.push_back(static_cast<std::int32_t>(edge));
    m_uvCorners.push_back(static_cast<std::int32_t>(uv));
}

void SolidBuilder::addBackward(std::uint32_t edge, std::uint32_t uv)
{
    m_topology.corners.push_back(-static_cast<std::int32_t>(edge) - 1);
    m_uvCorners.push_back(static_cast<std::int32_t>(uv));
}

void SolidBuilder::endFace()
{
    if (m_topology.loopStart.empty()) {
        m_topology.loopStart.push_back(0);
    }
    m_topology.loopStart.push_back(static_cast<std::uint32_t>(m_topology.corners.size()));
}

void SolidBuilder::joinLoops()
{
    if (m_topology.loopCount() > 1) {
        m_topology.faceLoop = {0, m_topology.loopCount()};
    }
}

void SolidBuilder::addFaces(const PolygonList& faces, std::span<const std::uint32_t> uvs,
                            bool isSmooth)
{
    EdgeTable known(pointCount());
    known.reserve(uvs.size() / 2);
    std::size_t corner = 0;
    for (std::uint32_t number = 0; number < faces.size(); ++number) {
        const auto face = faces.face(number);
        for (std::size_t i = 0; i < face.size(); ++i) {
            const std::uint32_t end = face[i + 1 == face.size() ? 0 : i + 1];
            std::uint32_t edge = known.find(face[i], end);
            const std::uint32_t uv = uvs.empty() ? 0 : uvs[corner];
            ++corner;
            if (edge == kNone) {
                edge = addEdge(face[i], end, false);
                known.add(face[i], end, edge);
            } else {
                m_edgeSmooth[edge] = isSmooth ? 1 : 0;
            }
            m_topology.edges[edge].start == face[i] ? addForward(edge, uv) : addBackward(edge, uv);
        }
        endFace();
    }
}

std::shared_ptr<const MeshData> SolidBuilder::finish(const SolidPlacement& placement, double lift,
                                                     SolidUp up)
{
    const SmallestTurn turn(up, placement.axis);
    const Vec3d raised = up == SolidUp::Y ? Vec3d{0, lift, 0} : Vec3d{0, 0, lift};
    std::vector<Vec3f> points;
    points.reserve(m_points.size());
    for (const Vec3d& point : m_points) {
        points.push_back(toFloat(turn(lift != 0 ? point + raised : point)));
    }
    MeshData mesh;
    m_topology.vertexCount = pointCount();
    mesh.points = std::make_shared<const std::vector<Vec3f>>(std::move(points));
    mesh.topology = std::make_shared<const MeshTopology>(std::move(m_topology));
    mesh.edgeSmooth = shareEdgeFlags(std::move(m_edgeSmooth));
    if (!m_uvs.empty()) {
        UvSet set;
        set.name = placement.uvSetName.empty() ? "map1" : placement.uvSetName;
        set.points = std::make_shared<const std::vector<Vec2f>>(std::move(m_uvs));
        set.corners = std::make_shared<const std::vector<std::int32_t>>(std::move(m_uvCorners));
        mesh.currentUvSet = set.name;
        mesh.uvSets.push_back(std::move(set));
    }
    return std::make_shared<const MeshData>(std::move(mesh));
}

} // namespace host::geometry
