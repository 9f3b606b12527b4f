#include "host/geometry/mesh/edit/dissolveEdges.h"

#include "host/geometry/mesh/edit/DisjointSets.h"
#include "host/geometry/mesh/edit/MeshLinks.h"
#include "host/geometry/mesh/edit/deleteFaces.h"
#include "host/geometry/mesh/edit/dissolveVertices.h"
#include "host/geometry/mesh/polygon.h"

#include <algorithm>

namespace host::geometry {
namespace {

constexpr std::size_t kLeastCorners = 3;

class EdgeDissolver {
public:
    EdgeDissolver(const MeshData& mesh, std::span<const std::uint32_t> edges);

    std::shared_ptr<const MeshData> run(const MeshRewriter::Cleaning& cleaning);

private:
    bool isGone(std::uint32_t corner) const { return m_twin[corner] != kNone; }
    std::uint32_t after(std::uint32_t corner) const;
    void writeFace(std::uint32_t face, std::span<const std::uint32_t> members);
    void traceLoops(std::span<const std::uint32_t> members);
    void traceLoop(std::uint32_t first);
    double area(std::span<const std::uint32_t> loop) const;
    void writeLoops(std::uint32_t face);

    const MeshData& m_mesh;
    const MeshTopology& m_topology;
    CornerLinks m_links;
    DisjointSets m_groups;
    std::vector<std::uint32_t> m_twin; ///< of corners that leave along gone edges; else kNone
    std::vector<bool> m_isTraced;
    std::vector<std::uint32_t> m_corners; ///< of the loops of a face, one after another
    std::vector<std::size_t> m_ends;
    MeshRewriter m_rewriter;
};

EdgeDissolver::EdgeDissolver(const MeshData& mesh, std::span<const std::uint32_t> edges)
    : m_mesh(mesh)
    , m_topology(*mesh.topology)
    , m_links(m_topology)
    , m_groups(m_topology.faceCount())
    , m_twin(m_topology.corners.size(), kNone)
    , m_isTraced(m_topology.corners.size())
    , m_rewriter(mesh)
{
    const NumberLists sides = cornersOfEdges(m_topology);
    for (const std::uint32_t edge : edges) {
        if (edge >= m_topology.edges.size()) {
            continue;
        }
        const std::span<const std::uint32_t> corners = sides.of(edge);
        if (corners.size() != 2 ||
            (m_topology.corners[corners[0]] < 0) == (m_topology.corners[corners[1]] < 0)) {
            continue;
        }
        m_twin[corners[0]] = corners[1];
        m_twin[corners[1]] = corners[0];
        m_groups.join(m_links.face(corners[0]), m_links.face(corners[1]));
    }
}

/// The corner that follows in the joined face. From a corner that stays this always comes to an
/// end: stepping over gone edges is reversible, so it cannot come back to where it was without
/// meeting the corner from which it began.
std::uint32_t EdgeDissolver::after(std::uint32_t corner) const
{
    std::uint32_t next = m_links.next(corner);
    while (isGone(next)) {
        next = m_links.next(m_twin[next]);
    }
    return next;
}

void EdgeDissolver::traceLoop(std::uint32_t first)
{
    const std::size_t begin = m_corners.size();
    for (std::uint32_t corner = first; !m_isTraced[corner]; corner = after(corner)) {
        m_isTraced[corner] = true;
        m_corners.push_back(corner);
    }
    if (m_corners.size() - begin < kLeastCorners) {
        m_corners.resize(begin);
        return;
    }
    m_ends.push_back(m_corners.size());
}

void EdgeDissolver::traceLoops(std::span<const std::uint32_t> members)
{
    m_corners.clear();
    m_ends.clear();
    for (const std::uint32_t face : members) {
        for (std::uint32_t corner = m_topology.firstCorner(face);
             corner < m_topology.endCorner(face); ++corner) {
            if (!isGone(corner) && !m_isTraced[corner]) {
                traceLoop(corner);
            }
        }
    }
}

double EdgeDissolver::area(std::span<const std::uint32_t> loop) const
{
    std::vector<Vec3d> points;
    points.reserve(loop.size());
    for (const std::uint32_t corner : loop) {
        points.push_back(toDouble((*m_mesh.points)[m_topology.cornerVertex(corner)]));
    }
    return length(areaVector(points));
}

void EdgeDissolver::writeLoops(std::uint32_t face)
{
    std::size_t outer = 0;
    const auto loopAt = [this](std::size_t loop) {
        const std::size_t begin = loop == 0 ? 0 : m_ends[loop - 1];
        return std::span<const std::uint32_t>(m_corners).subspan(begin, m_ends[loop] - begin);
    };
    double largest = m_ends.size() > 1 ? area(loopAt(0)) : 0;
    for (std::size_t loop = 1; loop < m_ends.size(); ++loop) {
        const double found = area(loopAt(loop));
        if (found > largest) {
            largest = found;
            outer = loop;
        }
    }
    const auto write = [&](std::size_t loop) {
        for (const std::uint32_t corner : loopAt(loop)) {
            m_rewriter.addCorner(m_topology.corners[corner], corner);
        }
        m_rewriter.endLoop();
    };
    m_rewriter.beginFace(face);
    write(outer);
    for (std::size_t loop = 0; loop < m_ends.size(); ++loop) {
        if (loop != outer) {
            write(loop);
        }
    }
    m_rewriter.endFace();
}

void EdgeDissolver::writeFace(std::uint32_t face, std::span<const std::uint32_t> members)
{
    const bool isTouched =
        members.size() > 1 || std::any_of(m_twin.begin() + m_topology.firstCorner(face),
                                          m_twin.begin() + m_topology.endCorner(face),
                                          [](std::uint32_t twin) { return twin != kNone; });
    if (!isTouched) {
        m_rewriter.copyFace(face);
        return;
    }
    traceLoops(members);
    if (!m_ends.empty()) {
        writeLoops(face);
    }
}

std::shared_ptr<const MeshData> EdgeDissolver::run(const MeshRewriter::Cleaning& cleaning)
{
    std::vector<std::uint32_t> owners(m_topology.faceCount());
    for (std::uint32_t face = 0; face < owners.size(); ++face) {
        owners[face] = m_groups.lowest(face);
    }
    const NumberLists members(owners, m_topology.faceCount());
    for (std::uint32_t face = 0; face < owners.size(); ++face) {
        if (owners[face] == face) {
            writeFace(face, members.of(face));
        }
    }
    return m_rewriter.finish(cleaning);
}

} // namespace

std::shared_ptr<const MeshData> dissolveEdges(const MeshData& mesh,
                                              std::span<const std::uint32_t> edges,
                                              MeshRewriter::Cleaning cleaning)
{
    cleaning.edges = true;
    return EdgeDissolver(mesh, edges).run(cleaning);
}

std::shared_ptr<const MeshData>
deleteEdges(const MeshData& mesh, std::span<const std::uint32_t> edges, bool cleansVertices)
{
    if (!cleansVertices) {
        return dissolveEdges(mesh, edges, kCleanAll);
    }
    const auto dissolved = dissolveEdges(mesh, edges, {.edges = true});
    if (dissolved == nullptr) {
        return nullptr;
    }
    std::vector<std::uint32_t> ends;
    for (const std::uint32_t edge : edges) {
        if (edge < mesh.topology->edges.size()) {
            ends.push_back(mesh.topology->edges[edge].start);
            ends.push_back(mesh.topology->edges[edge].end);
        }
    }
    std::sort(ends.begin(), ends.end());
    ends.erase(std::unique(ends.begin(), ends.end()), ends.end());
    return dissolveVertices(*dissolved, ends, kCleanAll);
}

} // namespace host::geometry
