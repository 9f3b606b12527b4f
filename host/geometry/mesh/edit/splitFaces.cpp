#include "host/geometry/mesh/edit/splitFaces.h"

#include "host/geometry/mesh/edit/MeshCutter.h"

#include <algorithm>
#include <cmath>
#include <unordered_map>
#include <unordered_set>

namespace host::geometry {
namespace {

/// Parts of an edge that differ by less are the same.
constexpr double kSamePart = 1e-6;

/// A corner that is looked up takes as long as so many that are only looked at.
constexpr std::size_t kCostOfKnowing = 256;

/// A piece of an edge, up to the next one or the edge's end.
struct Piece {
    double start = 0; ///< part of the way along the whole edge
    std::uint32_t edge = 0;
};

class LineCutter {
public:
    LineCutter(const MeshData& mesh, std::span<const SplitPoint> line)
        : m_edges(mesh.topology->edges), m_line(line), m_cutter(mesh)
    {
    }

    std::shared_ptr<const MeshData> run(double smoothingAngle)
    {
        for (const SplitPoint& point : m_line) {
            m_vertices.push_back(vertexOf(point));
        }
        std::size_t from = 0;
        if (m_line.empty() || isInside(0) || isInside(m_line.size() - 1)) {
            return nullptr;
        }
        for (std::size_t to = 1; to < m_line.size(); ++to) {
            if (!isInside(to)) {
                if (!cut(from, to)) {
                    return nullptr;
                }
                from = to;
            }
        }
        return m_cutter.finish(smoothingAngle);
    }

private:
    bool isInside(std::size_t point) const { return m_line[point].edge == kNone; }

    std::uint32_t vertexOf(const SplitPoint& point)
    {
        if (point.edge == kNone) {
            return m_cutter.rewriter().addPoint(toFloat(point.place));
        }
        if (point.part <= kSamePart) {
            return m_edges[point.edge].start;
        }
        if (point.part >= 1 - kSamePart) {
            return m_edges[point.edge].end;
        }
        return vertexOn(point.edge, point.part);
    }

    std::uint32_t vertexOn(std::uint32_t edge, double part)
    {
        std::vector<Piece>& pieces = m_pieces[edge];
        if (pieces.empty()) {
            pieces.push_back({0, edge});
        }
        std::size_t i = pieces.size();
        while (i > 1 && pieces[i - 1].start > part + kSamePart) {
            --i;
        }
        const Piece piece = pieces[i - 1];
        if (i > 1 && std::fabs(piece.start - part) <= kSamePart) {
            return m_cutter.edge(piece.edge).start;
        }
        const double end = i < pieces.size() ? pieces[i].start : 1;
        const std::uint32_t vertex =
            m_cutter.splitEdge(piece.edge, (part - piece.start) / (end - piece.start));
        pieces.insert(pieces.begin() + static_cast<std::ptrdiff_t>(i), {part, m_cutter.lastEdge()});
        return vertex;
    }

    /// Cuts between two points of edges, over those inside between them.
    bool cut(std::size_t from, std::size_t to)
    {
        const std::span inner = std::span(m_vertices).subspan(from + 1, to - from - 1);
        const std::uint32_t start = m_vertices[from];
        const std::uint32_t end = m_vertices[to];
        bool isAlongEdge = start == end;
        for (const std::uint32_t face : facesAt(from)) {
            if (m_cutter.hasVertex(face, start) && m_cutter.hasVertex(face, end)) {
                if (m_cutter.cutFace(face, start, end, inner)) {
                    return true;
                }
                isAlongEdge = true;
            }
        }
        return isAlongEdge && inner.empty();
    }

    /// The faces about a point, as they are now, ascending.
    std::vector<std::uint32_t> facesAt(std::size_t point)
    {
        const std::uint32_t vertex = m_vertices[point];
        std::unordered_set<std::uint32_t> faces;
        std::unordered_set<std::uint32_t> known{m_line[point].edge};
        std::vector<std::uint32_t> edges{m_line[point].edge};
        // Round the vertex from face to face.
        for (std::size_t i = 0; i < edges.size(); ++i) {
            for (const std::uint32_t face : m_cutter.facesOf(edges[i])) {
                if (!faces.insert(face).second || m_cutter.isTired() ||
                    m_cutter.isTired(kCostOfKnowing * m_cutter.loopOf(face).size())) {
                    continue;
                }
                for (const MeshCutter::Corner& corner : m_cutter.loopOf(face)) {
                    const std::uint32_t edge = edgeOf(corner.reference);
                    const MeshEdge& ends = m_cutter.edge(edge);
                    const bool isAtVertex = ends.start == vertex || ends.end == vertex;
                    if (isAtVertex && known.insert(edge).second) {
                        edges.push_back(edge);
                    }
                }
            }
        }
        std::vector<std::uint32_t> ascending(faces.begin(), faces.end());
        std::sort(ascending.begin(), ascending.end());
        return ascending;
    }

    const std::vector<MeshEdge>& m_edges;
    std::span<const SplitPoint> m_line;
    MeshCutter m_cutter;
    std::vector<std::uint32_t> m_vertices; ///< of each point
    std::unordered_map<std::uint32_t, std::vector<Piece>> m_pieces;
};

} // namespace

std::shared_ptr<const MeshData> splitFaces(const MeshData& mesh, std::span<const SplitPoint> line,
                                           double smoothingAngle)
{
    return LineCutter(mesh, line).run(smoothingAngle);
}

} // namespace host::geometry
