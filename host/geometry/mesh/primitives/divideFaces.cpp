#include "host/geometry/mesh/primitives/divideFaces.h"

namespace host::geometry {
namespace {

using Face = std::span<const std::uint32_t>;

Vec3d meanOf(const PolygonMesh& mesh, Face face)
{
    Vec3d sum;
    for (const std::uint32_t point : face) {
        sum = sum + mesh.points[point];
    }
    return face.empty() ? sum : sum * (1 / static_cast<double>(face.size()));
}

std::uint32_t addPoint(PolygonMesh& mesh, const Vec3d& point)
{
    mesh.points.push_back(point);
    return static_cast<std::uint32_t>(mesh.points.size() - 1);
}

/// Makes a point in the middle of each edge, once.
class EdgeMiddles {
public:
    explicit EdgeMiddles(PolygonMesh& mesh) : m_mesh(mesh) {}

    /// The middles of the edges of a face; the first is the one after the first corner.
    const std::vector<std::uint32_t>& ofFace(Face face)
    {
        m_ofFace.clear();
        for (std::size_t i = 0; i < face.size(); ++i) {
            const MeshEdge edge{face[i], face[i + 1 == face.size() ? 0 : i + 1]};
            const auto [number, isNew] = m_numbers.find(edge.start, edge.end);
            if (isNew) {
                const Vec3d middle = (m_mesh.points[edge.start] + m_mesh.points[edge.end]) * 0.5;
                m_middles.push_back(addPoint(m_mesh, middle));
                m_edges.push_back(edge);
                m_isBorder.push_back(true);
            } else {
                m_isBorder[number] = false;
            }
            m_ofFace.push_back(m_middles[number]);
        }
        return m_ofFace;
    }
    void tellBorder()
    {
        m_mesh.newBorderPoints.clear();
        m_mesh.newBorderEdges.clear();
        for (std::size_t i = 0; i < m_middles.size(); ++i) {
            if (m_isBorder[i]) {
                m_mesh.newBorderPoints.push_back(m_middles[i]);
                m_mesh.newBorderEdges.push_back(m_edges[i]);
            }
        }
    }

private:
    PolygonMesh& m_mesh;
    EdgeNumbers m_numbers;
    std::vector<std::uint32_t> m_middles;
    std::vector<MeshEdge> m_edges;
    std::vector<bool> m_isBorder;
    std::vector<std::uint32_t> m_ofFace;
};

} // namespace

PolygonMesh dividedToQuads(const PolygonMesh& mesh)
{
    PolygonMesh result;
    result.points = mesh.points;
    EdgeMiddles middles(result);
    for (std::uint32_t number = 0; number < mesh.faces.size(); ++number) {
        const Face face = mesh.faces.face(number);
        const auto& after = middles.ofFace(face);
        const std::uint32_t center = addPoint(result, meanOf(mesh, face));
        for (std::size_t i = 0; i < face.size(); ++i) {
            result.faces.add({i == 0 ? after.back() : after[i - 1], face[i], after[i], center});
        }
    }
    middles.tellBorder();
    return result;
}

PolygonMesh dividedToPie(const PolygonMesh& mesh)
{
    PolygonMesh result;
    result.points = mesh.points;
    for (std::uint32_t number = 0; number < mesh.faces.size(); ++number) {
        const Face face = mesh.faces.face(number);
        const std::uint32_t center = addPoint(result, meanOf(mesh, face));
        for (std::size_t i = 0; i < face.size(); ++i) {
            result.faces.add({face[i], face[i + 1 == face.size() ? 0 : i + 1], center});
        }
    }
    return result;
}

PolygonMesh dividedToTriangles(const PolygonMesh& mesh)
{
    PolygonMesh result;
    result.points = mesh.points;
    EdgeMiddles middles(result);
    for (std::uint32_t number = 0; number < mesh.faces.size(); ++number) {
        const Face face = mesh.faces.face(number);
        if (face.size() != 3) {
            return dividedToTriangles(dividedToPie(mesh));
        }
        const auto& after = middles.ofFace(face);
        for (std::size_t i = 0; i < 3; ++i) {
            result.faces.add({face[i], after[i], after[(i + 2) % 3]});
        }
        result.faces.add({after[0], after[1], after[2]});
    }
    middles.tellBorder();
    return result;
}

} // namespace host::geometry
