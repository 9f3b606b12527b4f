#include "host/geometry/mesh/edit/subdivideFaces.h"

#include "host/geometry/mesh/edit/MeshCutter.h"

#include <algorithm>
#include <array>
#include <utility>

namespace host::geometry {
namespace {

using Corner = MeshCutter::Corner;

/// What one division makes of faces: the columns and rows of a face of four (0: a face at each
/// corner instead, as of all others), and whether the middle is joined to the corners.
struct Division {
    std::uint32_t u = 0;
    std::uint32_t v = 0;
    bool hasFans = false;
    bool isAscending = false; ///< the order in which faces are taken
};

class FaceDivider {
public:
    FaceDivider(const MeshData& mesh, std::span<const std::uint32_t> faces,
                const Division& division)
        : m_topology(*mesh.topology), m_faces(faces), m_division(division), m_cutter(mesh)
    {
    }

    std::shared_ptr<const MeshData> run()
    {
        if (!m_division.hasFans) {
            splitEdges();
        }
        for (std::size_t i = 0; i < m_faces.size(); ++i) {
            divide(m_faces[m_division.isAscending ? i : m_faces.size() - 1 - i]);
        }
        return m_cutter.finish(0);
    }

private:
    bool hasHoles(std::uint32_t face) const
    {
        return m_topology.firstLoop(face + 1) - m_topology.firstLoop(face) != 1;
    }
    std::uint32_t cornerCount(std::uint32_t face) const
    {
        return m_topology.endCorner(face) - m_topology.firstCorner(face);
    }
    bool isGrid(std::uint32_t face) const { return m_division.u > 0 && cornerCount(face) == 4; }
    /// The pieces of an edge of a face; `side` counts from the first edge.
    std::uint32_t pieces(std::uint32_t face, std::uint32_t side) const
    {
        const bool isSingle = m_division.u == 1 && m_division.v == 1;
        if (!isGrid(face)) {
            return isSingle ? 1 : 2;
        }
        return side % 2 == 0 ? m_division.u : m_division.v;
    }

    /// Splits each edge into the most pieces that a face wants.
    void splitEdges()
    {
        std::vector<std::pair<std::uint32_t, std::uint32_t>> splits;
        for (const std::uint32_t face : m_faces) {
            const std::uint32_t first = m_topology.firstCorner(face);
            for (std::uint32_t side = 0; !hasHoles(face) && side < cornerCount(face); ++side) {
                splits.emplace_back(edgeOf(m_topology.corners[first + side]), pieces(face, side));
            }
        }
        std::sort(splits.begin(), splits.end(), std::greater<>());
        std::uint32_t last = kNone;
        for (const auto& [edge, count] : splits) {
            if (edge == last || m_cutter.rewriter().isFull()) {
                continue;
            }
            last = edge;
            std::uint32_t rest = edge;
            for (std::uint32_t left = count; left > 1; --left) {
                m_cutter.splitEdge(rest, 1.0 / left);
                rest = m_cutter.lastEdge();
            }
        }
    }

    void divide(std::uint32_t face)
    {
        if (hasHoles(face) || m_cutter.rewriter().isFull()) {
            return;
        }
        const std::span<const Corner> loop = m_cutter.loopOf(face);
        m_loop.assign(loop.begin(), loop.end());
        if (m_division.hasFans) {
            makeFan(face);
            return;
        }
        const std::uint32_t count = cornerCount(face);
        std::size_t expected = 0;
        for (std::uint32_t side = 0; side < count; ++side) {
            expected += pieces(face, side);
        }
        if (m_loop.size() != expected) {
            return; // a neighbour asked for other pieces
        }
        if (isGrid(face)) {
            makeGrid(face);
        } else if (expected > count) {
            makeCorners(face);
        }
    }

    // --- round a middle

    /// The middle of the corners before, every `step`th of the loop.
    Vec3d middleOf(std::size_t step)
    {
        Vec3d sum;
        for (std::size_t i = 0; i < m_loop.size(); i += step) {
            sum = sum + pointAt(m_loop[i]);
        }
        return sum * (static_cast<double>(step) / static_cast<double>(m_loop.size()));
    }

    Vec3d pointAt(const Corner& corner)
    {
        return toDouble(m_cutter.rewriter().points()[m_cutter.vertexAt(corner)]);
    }

    std::uint32_t uvsInMiddle(std::size_t step)
    {
        std::vector<std::int32_t> ids(m_cutter.uvSetCount(), -1);
        for (std::size_t set = 0; set < ids.size(); ++set) {
            double x = 0;
            double y = 0;
            bool hasAll = true;
            for (std::size_t i = 0; i < m_loop.size(); i += step) {
                const std::int32_t id = m_cutter.uvsAt(m_loop[i].uvs)[set];
                hasAll = hasAll && id >= 0;
                const Vec2f place = hasAll ? uvPoint(set, id) : Vec2f{};
                x += place.x;
                y += place.y;
            }
            const double part = static_cast<double>(step) / static_cast<double>(m_loop.size());
            if (hasAll) {
                ids[set] = m_cutter.rewriter().addUv(
                    set, {static_cast<float>(x * part), static_cast<float>(y * part)});
            }
        }
        return m_cutter.addUvs(ids);
    }

    Vec2f uvPoint(std::size_t set, std::int32_t id)
    {
        return m_cutter.rewriter().uvPoints(set)[static_cast<std::size_t>(id)];
    }

    /// A face of four at each corner; the loop has the middles of its edges.
    void makeCorners(std::uint32_t face)
    {
        const std::uint32_t middle = m_cutter.rewriter().addPoint(toFloat(middleOf(2)));
        const std::uint32_t uvs = uvsInMiddle(2);
        const auto firstSpoke = static_cast<std::uint32_t>(m_cutter.rewriter().edges().size());
        const std::size_t count = m_loop.size() / 2;
        for (std::size_t side = 0; side < count; ++side) {
            m_cutter.rewriter().addEdge(m_cutter.vertexAt(m_loop[2 * side + 1]), middle, true);
        }
        for (std::size_t corner = 0; corner < count; ++corner) {
            const std::size_t back = 2 * ((corner + count - 1) % count) + 1;
            const auto spokeOut = firstSpoke + static_cast<std::uint32_t>(corner);
            const auto spokeBack = firstSpoke + static_cast<std::uint32_t>(back / 2);
            const std::array<Corner, 4> cell{
                m_loop[2 * corner],
                Corner{referenceTo(spokeOut, false), m_loop[2 * corner + 1].uvs},
                Corner{referenceTo(spokeBack, true), uvs}, m_loop[back]};
            place(face, cell, corner == 0);
        }
    }

    /// A triangle over each edge.
    void makeFan(std::uint32_t face)
    {
        const std::uint32_t middle = m_cutter.rewriter().addPoint(toFloat(middleOf(1)));
        const std::uint32_t uvs = uvsInMiddle(1);
        const auto firstSpoke = static_cast<std::uint32_t>(m_cutter.rewriter().edges().size());
        const std::size_t count = m_loop.size();
        for (const Corner& corner : m_loop) {
            m_cutter.rewriter().addEdge(m_cutter.vertexAt(corner), middle, true);
        }
        for (std::size_t side = 0; side < count; ++side) {
            const std::size_t next = (side + 1) % count;
            const auto out = firstSpoke + static_cast<std::uint32_t>(next);
            const auto back = firstSpoke + static_cast<std::uint32_t>(side);
            const std::array<Corner, 3> cell{m_loop[side],
                                             Corner{referenceTo(out, false), m_loop[next].uvs},
                                             Corner{referenceTo(back, true), uvs}};
            place(face, cell, side == 0);
        }
    }

    void place(std::uint32_t face, std::span<const Corner> loop, bool isFirst)
    {
        if (isFirst) {
            m_cutter.setLoop(face, loop);
        } else {
            m_cutter.addFace(face, loop);
        }
    }

    // --- grids

    /// A point of the grid: its vertex and texture coordinates.
    struct Knot {
        std::uint32_t vertex = 0;
        std::uint32_t uvs = 0;
    };

    std::size_t at(std::size_t i, std::size_t j) const { return j * (m_division.u + 1) + i; }

    void makeGrid(std::uint32_t face)
    {
        const std::size_t u = m_division.u;
        const std::size_t v = m_division.v;
        m_knots.assign((u + 1) * (v + 1), {});
        m_rowEdges.assign((u + 1) * (v + 1), 0);
        m_columnEdges.assign((u + 1) * (v + 1), 0);
        for (std::size_t i = 0; i < u; ++i) {
            takeKnot(at(i, 0), m_loop[i]);
            takeKnot(at(u - i, v), m_loop[u + v + i]);
            m_rowEdges[at(i, 0)] = m_loop[i].reference;
            m_rowEdges[at(u - 1 - i, v)] = reversed(m_loop[u + v + i].reference);
        }
        for (std::size_t j = 0; j < v; ++j) {
            takeKnot(at(u, j), m_loop[u + j]);
            takeKnot(at(0, v - j), m_loop[2 * u + v + j]);
            m_columnEdges[at(u, j)] = m_loop[u + j].reference;
            m_columnEdges[at(0, v - 1 - j)] = reversed(m_loop[2 * u + v + j].reference);
        }
        fillGrid();
        for (std::size_t j = 0; j < v; ++j) {
            for (std::size_t i = 0; i < u; ++i) {
                const std::array<Corner, 4> cell{
                    Corner{m_rowEdges[at(i, j)], m_knots[at(i, j)].uvs},
                    Corner{m_columnEdges[at(i + 1, j)], m_knots[at(i + 1, j)].uvs},
                    Corner{reversed(m_rowEdges[at(i, j + 1)]), m_knots[at(i + 1, j + 1)].uvs},
                    Corner{reversed(m_columnEdges[at(i, j)]), m_knots[at(i, j + 1)].uvs}};
                place(face, cell, i == 0 && j == 0);
            }
        }
    }

    void takeKnot(std::size_t place, const Corner& corner)
    {
        m_knots[place] = {m_cutter.vertexAt(corner), corner.uvs};
    }

    /// The inner points and edges.
    void fillGrid()
    {
        const std::size_t u = m_division.u;
        const std::size_t v = m_division.v;
        for (std::size_t j = 1; j < v; ++j) {
            for (std::size_t i = 1; i < u; ++i) {
                m_knots[at(i, j)] = innerKnot(static_cast<double>(i) / static_cast<double>(u),
                                              static_cast<double>(j) / static_cast<double>(v));
            }
        }
        for (std::size_t i = 1; i < u; ++i) {
            for (std::size_t j = 0; j < v; ++j) {
                m_columnEdges[at(i, j)] = addEdge(at(i, j), at(i, j + 1));
            }
        }
        for (std::size_t j = 1; j < v; ++j) {
            for (std::size_t i = 0; i < u; ++i) {
                m_rowEdges[at(i, j)] = addEdge(at(i, j), at(i + 1, j));
            }
        }
    }

    std::int32_t addEdge(std::size_t from, std::size_t to)
    {
        return referenceTo(
            m_cutter.rewriter().addEdge(m_knots[from].vertex, m_knots[to].vertex, true), false);
    }

    /// Between the four corners in proportion.
    Knot innerKnot(double s, double t)
    {
        const std::size_t u = m_division.u;
        const std::size_t v = m_division.v;
        const std::array<std::size_t, 4> corners{at(0, 0), at(u, 0), at(u, v), at(0, v)};
        const std::array<double, 4> weights{(1 - s) * (1 - t), s * (1 - t), s * t, (1 - s) * t};
        Vec3d point;
        for (std::size_t c = 0; c < 4; ++c) {
            const std::uint32_t vertex = m_knots[corners[c]].vertex;
            point = point + toDouble(m_cutter.rewriter().points()[vertex]) * weights[c];
        }
        std::vector<std::int32_t> ids(m_cutter.uvSetCount(), -1);
        for (std::size_t set = 0; set < ids.size(); ++set) {
            ids[set] = innerUv(set, corners, weights);
        }
        return {m_cutter.rewriter().addPoint(toFloat(point)), m_cutter.addUvs(ids)};
    }

    std::int32_t innerUv(std::size_t set, const std::array<std::size_t, 4>& corners,
                         const std::array<double, 4>& weights)
    {
        double x = 0;
        double y = 0;
        for (std::size_t c = 0; c < 4; ++c) {
            const std::int32_t id = m_cutter.uvsAt(m_knots[corners[c]].uvs)[set];
            if (id < 0) {
                return -1;
            }
            x += uvPoint(set, id).x * weights[c];
            y += uvPoint(set, id).y * weights[c];
        }
        return m_cutter.rewriter().addUv(set, {static_cast<float>(x), static_cast<float>(y)});
    }

    const MeshTopology& m_topology;
    std::span<const std::uint32_t> m_faces;
    const Division& m_division;
    MeshCutter m_cutter;
    std::vector<Corner> m_loop;
    std::vector<Knot> m_knots;
    std::vector<std::int32_t> m_rowEdges;    ///< from each knot to the next along u
    std::vector<std::int32_t> m_columnEdges; ///< along v
};

/// The corners of the faces: what a division into them adds at most.
std::size_t cornersOf(const MeshData& mesh, std::span<const std::uint32_t> faces)
{
    std::size_t count = 0;
    for (const std::uint32_t face : faces) {
        count += mesh.topology->endCorner(face) - mesh.topology->firstCorner(face);
    }
    return count;
}

std::shared_ptr<const MeshData> repeat(const MeshData& mesh, std::span<const std::uint32_t> faces,
                                       std::uint32_t times, const Division& division)
{
    auto result = std::make_shared<const MeshData>(mesh);
    std::vector<std::uint32_t> divided(faces.begin(), faces.end());
    // The first time makes a face of each corner, and each later one at least three of each face.
    std::size_t expected = cornersOf(mesh, faces);
    for (std::uint32_t time = 1; time < times && expected <= kMaxDividedFaces; ++time) {
        expected *= division.hasFans ? 3 : 4;
    }
    if (expected > kMaxDividedFaces) {
        return nullptr;
    }
    for (std::uint32_t time = 0; time < times; ++time) {
        const std::uint32_t before = result->topology->faceCount();
        result = FaceDivider(*result, divided, division).run();
        if (result == nullptr) {
            return nullptr;
        }
        for (std::uint32_t face = before; face < result->topology->faceCount(); ++face) {
            divided.push_back(face);
        }
    }
    return result;
}

} // namespace

std::shared_ptr<const MeshData>
subdivideToQuads(const MeshData& mesh, std::span<const std::uint32_t> faces, std::uint32_t times)
{
    return repeat(mesh, faces, times, Division{});
}

std::shared_ptr<const MeshData> subdivideToTriangles(const MeshData& mesh,
                                                     std::span<const std::uint32_t> faces,
                                                     std::uint32_t times)
{
    return repeat(mesh, faces, times, Division{.hasFans = true});
}

std::shared_ptr<const MeshData> fanFaces(const MeshData& mesh, std::span<const std::uint32_t> faces)
{
    return repeat(mesh, faces, 1, Division{.hasFans = true, .isAscending = true});
}

std::shared_ptr<const MeshData> subdivideToGrids(const MeshData& mesh,
                                                 std::span<const std::uint32_t> faces,
                                                 std::uint32_t u, std::uint32_t v)
{
    if (std::uint64_t{u} * v > kMaxDividedFaces ||
        cornersOf(mesh, faces) * std::uint64_t{u} * v > std::uint64_t{kMaxDividedFaces} * 4) {
        return nullptr;
    }
    return FaceDivider(mesh, faces, Division{.u = u, .v = v}).run();
}

} // namespace host::geometry
