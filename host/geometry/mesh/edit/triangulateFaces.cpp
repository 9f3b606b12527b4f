#include "host/geometry/mesh/edit/triangulateFaces.h"

#include "host/geometry/mesh/edit/MeshLinks.h"
#include "host/geometry/mesh/polygon.h"
#include "host/geometry/mesh/triangulate.h"

#include <algorithm>

namespace host::geometry {
namespace {

class FaceTriangulator {
public:
    explicit FaceTriangulator(const MeshData& mesh)
        : m_topology(*mesh.topology), m_links(m_topology), m_rewriter(mesh)
    {
    }

    void replace(std::uint32_t face, std::span<const std::uint32_t> triangleCorners);
    void copy(std::uint32_t face) { m_rewriter.copyFace(face); }
    std::shared_ptr<const MeshData> finish() { return m_rewriter.finish(); }

private:
    /// A side of a triangle that is no edge of the face: between two corners, from whichever side.
    struct Cut {
        std::uint32_t low = 0;
        std::uint32_t high = 0;
        std::uint32_t place = 0; ///< among the sides of the triangles
        bool isSameAs(const Cut& other) const { return low == other.low && high == other.high; }
    };

    void findCuts();
    void numberCuts();
    std::int32_t side(std::uint32_t place) const;

    const MeshTopology& m_topology;
    CornerLinks m_links;
    MeshRewriter m_rewriter;
    std::vector<std::uint32_t> m_triangles; ///< corners, three each
    std::vector<Cut> m_cuts;
    std::vector<std::uint32_t> m_firstPlace; ///< of the side that is the same cut; kNone for edges
    std::vector<std::uint32_t> m_edge;       ///< of sides that are the first of their cut
};

constexpr std::uint32_t nextPlace(std::uint32_t place)
{
    return place % 3 == 2 ? place - 2 : place + 1;
}

void FaceTriangulator::findCuts()
{
    m_cuts.clear();
    for (std::uint32_t place = 0; place < m_triangles.size(); ++place) {
        const std::uint32_t a = m_triangles[place];
        const std::uint32_t b = m_triangles[nextPlace(place)];
        if (m_links.next(a) != b) {
            m_cuts.push_back({std::min(a, b), std::max(a, b), place});
        }
    }
    std::sort(m_cuts.begin(), m_cuts.end(), [](const Cut& a, const Cut& b) {
        return a.low != b.low     ? a.low < b.low
               : a.high != b.high ? a.high < b.high
                                  : a.place < b.place;
    });
}

void FaceTriangulator::numberCuts()
{
    m_firstPlace.assign(m_triangles.size(), kNone);
    for (std::size_t i = 0; i < m_cuts.size(); ++i) {
        const bool isFirst = i == 0 || !m_cuts[i].isSameAs(m_cuts[i - 1]);
        m_firstPlace[m_cuts[i].place] =
            isFirst ? m_cuts[i].place : m_firstPlace[m_cuts[i - 1].place];
    }
    m_edge.assign(m_triangles.size(), kNone);
    for (std::uint32_t place = 0; place < m_triangles.size(); ++place) {
        if (m_firstPlace[place] == place) {
            m_edge[place] =
                m_rewriter.addEdge(m_topology.cornerVertex(m_triangles[place]),
                                   m_topology.cornerVertex(m_triangles[nextPlace(place)]), true);
        }
    }
}

std::int32_t FaceTriangulator::side(std::uint32_t place) const
{
    const std::uint32_t first = m_firstPlace[place];
    if (first == kNone) {
        return m_topology.corners[m_triangles[place]];
    }
    return referenceTo(m_edge[first], m_triangles[first] != m_triangles[place]);
}

void FaceTriangulator::replace(std::uint32_t face, std::span<const std::uint32_t> triangleCorners)
{
    constexpr std::size_t kTwoTriangles = 6;
    m_triangles.assign(triangleCorners.begin(), triangleCorners.end());
    if (m_triangles.size() == kTwoTriangles) {
        const bool isFromFirst = m_triangles[0] == m_triangles[3]; // (0 1 2) (0 2 3) begins right
        if (!isFromFirst) {
            std::rotate(m_triangles.begin() + 3, m_triangles.end() - 1, m_triangles.end());
        }
    }
    findCuts();
    numberCuts();
    for (std::uint32_t place = 0; place < m_triangles.size(); ++place) {
        if (place % 3 == 0) {
            m_rewriter.beginFace(face);
        }
        m_rewriter.addCorner(side(place), m_triangles[place]);
        if (place % 3 == 2) {
            m_rewriter.endFace();
        }
    }
}

} // namespace

std::shared_ptr<const MeshData> triangulateFaces(const MeshData& mesh,
                                                 std::span<const std::uint32_t> faces)
{
    const MeshTopology& topology = *mesh.topology;
    std::vector<bool> isCut(topology.faceCount());
    for (const std::uint32_t face : faces) {
        if (face < isCut.size()) {
            isCut[face] = topology.endCorner(face) - topology.firstCorner(face) > 3;
        }
    }
    std::vector<std::uint32_t> others;
    for (std::uint32_t face = 0; face < isCut.size(); ++face) {
        if (!isCut[face]) {
            others.push_back(face);
        }
    }
    const std::vector<std::uint32_t> vertices = cornerVertices(topology);
    const Triangulation cut = triangulate(topology, vertices, *mesh.points, mesh.quadSplit, others);
    FaceTriangulator triangulator(mesh);
    for (std::uint32_t face = 0; face < isCut.size(); ++face) {
        const std::size_t first = std::size_t{3} * cut.faceFirstTriangle[face];
        const std::size_t end = std::size_t{3} * cut.faceFirstTriangle[face + 1];
        if (isCut[face] && end > first) {
            triangulator.replace(face, std::span(cut.corners).subspan(first, end - first));
        } else {
            triangulator.copy(face);
        }
    }
    return triangulator.finish();
}

} // namespace host::geometry
