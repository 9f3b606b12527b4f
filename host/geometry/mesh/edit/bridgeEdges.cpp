#include "host/geometry/mesh/edit/bridgeEdges.h"

#include "host/geometry/mesh/edit/MeshRewriter.h"
#include "host/geometry/mesh/edit/edgeSmoothness.h"

#include <algorithm>
#include <limits>
#include <unordered_map>

namespace host::geometry {
namespace {

/// Border edges in a row, as new faces walk them: against the faces that are there.
struct Border {
    std::vector<std::int32_t> references;
    std::vector<std::uint32_t> vertices; ///< where each starts, and for a chain its end
    bool isLoop = false;
};

class Bridge {
public:
    Bridge(const MeshData& mesh, const Bridging& bridging)
        : m_topology(*mesh.topology), m_bridging(bridging), m_rewriter(mesh)
    {
    }

    std::shared_ptr<const MeshData> run(std::span<const std::uint32_t> edges)
    {
        if (!findBorders(edges) || !pair()) {
            return nullptr;
        }
        const std::size_t rows = std::size_t{m_bridging.divisions} + 1;
        if (m_first.references.size() * rows > kMaxBridgeFaces) {
            return nullptr;
        }
        m_rewriter.copyFaces(0, m_topology.faceCount());
        addPoints();
        for (std::size_t i = 0; i < m_first.references.size(); ++i) {
            for (std::uint32_t row = 0; row < rows; ++row) {
                addFace(i, row);
            }
        }
        return withSmoothEdges(m_rewriter.finish(), m_bridging.smoothingAngle);
    }

private:
    bool findBorders(std::span<const std::uint32_t> edges)
    {
        const NumberLists corners = cornersOfEdges(m_topology);
        std::unordered_map<std::uint32_t, std::int32_t> leaving;
        std::unordered_map<std::uint32_t, std::int32_t> arriving;
        for (const std::uint32_t edge : edges) {
            if (corners.of(edge).size() != 1) {
                return false;
            }
            const std::int32_t along = reversed(m_topology.corners[corners.of(edge).front()]);
            if (!leaving.emplace(startOf(along), along).second ||
                !arriving.emplace(startOf(reversed(along)), along).second) {
                return false;
            }
        }
        std::vector<Border> borders;
        for (const std::uint32_t edge : edges) {
            const std::int32_t along = reversed(m_topology.corners[corners.of(edge).front()]);
            if (leaving.count(startOf(along)) != 0) {
                borders.push_back(takeBorder(along, leaving, arriving));
            }
        }
        if (borders.size() != 2 || borders[0].isLoop != borders[1].isLoop ||
            borders[0].references.size() != borders[1].references.size()) {
            return false;
        }
        const bool isSwapped = holds(borders[1], m_bridging.startVertex1) &&
                               !holds(borders[0], m_bridging.startVertex1);
        m_first = std::move(borders[isSwapped ? 1 : 0]);
        m_second = std::move(borders[isSwapped ? 0 : 1]);
        return true;
    }

    std::uint32_t startOf(std::int32_t reference) const
    {
        const MeshEdge& ends = m_topology.edges[edgeOf(reference)];
        return reference >= 0 ? ends.start : ends.end;
    }

    Border takeBorder(std::int32_t along, std::unordered_map<std::uint32_t, std::int32_t>& leaving,
                      const std::unordered_map<std::uint32_t, std::int32_t>& arriving) const
    {
        std::int32_t first = along;
        for (auto back = arriving.find(startOf(first));
             back != arriving.end() && back->second != along;
             back = arriving.find(startOf(first))) {
            first = back->second;
        }
        Border border;
        std::uint32_t vertex = startOf(first);
        for (auto next = leaving.find(vertex); next != leaving.end(); next = leaving.find(vertex)) {
            border.references.push_back(next->second);
            border.vertices.push_back(vertex);
            vertex = startOf(reversed(next->second));
            leaving.erase(next);
        }
        border.isLoop = vertex == border.vertices.front();
        if (!border.isLoop) {
            border.vertices.push_back(vertex);
        }
        return border;
    }

    static bool holds(const Border& border, std::uint32_t vertex)
    {
        return std::find(border.vertices.begin(), border.vertices.end(), vertex) !=
               border.vertices.end();
    }

    /// Turns the loops to their starts. The second border runs the other way: its place i is
    /// opposite the place i of the first.
    bool pair()
    {
        const std::size_t count = m_first.vertices.size();
        std::reverse(m_second.vertices.begin(), m_second.vertices.end());
        std::reverse(m_second.references.begin(), m_second.references.end());
        if (!m_first.isLoop) {
            return true;
        }
        // Of a loop the edge from place i + 1 back to place i is the one after, now.
        std::rotate(m_second.references.begin(), m_second.references.begin() + 1,
                    m_second.references.end());
        turnTo(m_first, placeOf(m_first, m_bridging.startVertex1, 0));
        const std::size_t second =
            placeOf(m_second, m_bridging.startVertex2, nearestTo(m_first.vertices.front()));
        const auto shift =
            static_cast<std::int64_t>(m_bridging.shift) % static_cast<std::int64_t>(count);
        turnTo(m_second,
               (second + static_cast<std::size_t>(shift + static_cast<std::int64_t>(count))) %
                   count);
        return true;
    }

    static std::size_t placeOf(const Border& border, std::uint32_t vertex, std::size_t otherwise)
    {
        const auto found = std::find(border.vertices.begin(), border.vertices.end(), vertex);
        return found == border.vertices.end()
                   ? otherwise
                   : static_cast<std::size_t>(found - border.vertices.begin());
    }

    std::size_t nearestTo(std::uint32_t vertex)
    {
        std::size_t nearest = 0;
        double least = std::numeric_limits<double>::infinity();
        for (std::size_t i = 0; i < m_second.vertices.size(); ++i) {
            const Vec3d way = pointOf(m_second.vertices[i]) - pointOf(vertex);
            if (dot(way, way) < least) {
                least = dot(way, way);
                nearest = i;
            }
        }
        return nearest;
    }

    static void turnTo(Border& border, std::size_t place)
    {
        const auto turn = static_cast<std::ptrdiff_t>(place);
        std::rotate(border.vertices.begin(), border.vertices.begin() + turn, border.vertices.end());
        std::rotate(border.references.begin(), border.references.begin() + turn,
                    border.references.end());
    }

    Vec3d pointOf(std::uint32_t vertex) { return toDouble(m_rewriter.points()[vertex]); }

    void addPoints()
    {
        m_rows.push_back(m_first.vertices);
        for (std::uint32_t row = 1; row <= m_bridging.divisions; ++row) {
            const double part = static_cast<double>(row) / (m_bridging.divisions + 1.0);
            std::vector<std::uint32_t> points;
            for (std::size_t i = 0; i < m_first.vertices.size(); ++i) {
                const Vec3d from = pointOf(m_first.vertices[i]);
                const Vec3d to = pointOf(m_second.vertices[i]);
                points.push_back(m_rewriter.addPoint(toFloat(from + (to - from) * part)));
            }
            m_rows.push_back(std::move(points));
        }
        m_rows.push_back(m_second.vertices);
    }

    /// The edge between two points; new the first time, but for those of the borders.
    std::int32_t edgeBetween(std::uint32_t from, std::uint32_t to)
    {
        const std::uint64_t key = std::uint64_t{std::max(from, to)} << 32U | std::min(from, to);
        const auto [entry, isNew] = m_made.try_emplace(key, 0);
        if (isNew) {
            entry->second = m_rewriter.addEdge(from, to, false);
            markSmoothByAngle(m_rewriter, entry->second);
        }
        return referenceTo(entry->second, m_rewriter.edges()[entry->second].start != from);
    }

    void addFace(std::size_t i, std::size_t row)
    {
        const std::size_t next = i + 1 < m_rows[row].size() ? i + 1 : 0;
        const auto& here = m_rows[row];
        const auto& there = m_rows[row + 1];
        const bool isFirst = row == 0;
        const bool isLast = row + 2 == m_rows.size();
        m_rewriter.beginFace(kNoSource);
        m_rewriter.addCorner(isFirst ? m_first.references[i] : edgeBetween(here[i], here[next]));
        m_rewriter.addCorner(edgeBetween(here[next], there[next]));
        m_rewriter.addCorner(isLast ? m_second.references[i] : edgeBetween(there[next], there[i]));
        m_rewriter.addCorner(edgeBetween(there[i], here[i]));
        m_rewriter.endFace();
    }

    const MeshTopology& m_topology;
    const Bridging& m_bridging;
    MeshRewriter m_rewriter;
    Border m_first;
    Border m_second;
    std::vector<std::vector<std::uint32_t>> m_rows;
    std::unordered_map<std::uint64_t, std::uint32_t> m_made;
};

} // namespace

std::shared_ptr<const MeshData>
bridgeEdges(const MeshData& mesh, std::span<const std::uint32_t> edges, const Bridging& bridging)
{
    return Bridge(mesh, bridging).run(edges);
}

} // namespace host::geometry
