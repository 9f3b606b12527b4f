#include "host/geometry/mesh/edit/subdivideFaces.h"

#include "host/geometry/mesh/edit/MeshCutter.h"

#include <algorithm>
#include <array>
#include <utility>

namespace host::geometry {
namespace {

using Corner = MeshCutter::Corner;

/// What one division makes of faces.
struct Division {
    enum class Into {
        Corners, ///< a face of four at each corner, about the middle
        Fans,    ///< a triangle over each edge, about the middle
        Grids    ///< columns and rows of faces of four; other faces as Corners
    };
    Into into = Into::Corners;
    std::uint32_t u = 1; ///< columns
    std::uint32_t v = 1; ///< rows
};

class FaceDivider {
public:
    FaceDivider(const MeshData& mesh, std::span<const std::uint32_t> faces,
                const Division& division)
        : m_topology(*mesh.topology)
        , m_faces(faces)
        , m_division(division)
        , m_cutter(mesh)
        , m_edgeKinds(m_topology.edges.size(), EdgeKind::Whole)
    {
    }

    std::shared_ptr<const MeshData> run()
    {
        if (m_division.into == Division::Into::Grids) {
            divideToGrids();
            return m_cutter.finish(0);
        }
        for (const std::uint32_t face : m_faces) {
            if (hasHoles(face) || m_cutter.rewriter().isFull()) {
                continue;
            }
            if (m_division.into == Division::Into::Fans) {
                takeLoop(face);
                makeFan(face);
            } else {
                divideToCorners(face);
            }
        }
        return m_cutter.finish(0);
    }

private:
    enum class EdgeKind : std::uint8_t { Whole, Halved, Column, Row };

    bool hasHoles(std::uint32_t face) const
    {
        return m_topology.firstLoop(face + 1) - m_topology.firstLoop(face) != 1;
    }
    std::uint32_t cornerCount(std::uint32_t face) const
    {
        return m_topology.endCorner(face) - m_topology.firstCorner(face);
    }
    std::uint32_t edgeAt(std::uint32_t face, std::uint32_t side) const
    {
        return edgeOf(m_topology.corners[m_topology.firstCorner(face) + side]);
    }
    void takeLoop(std::uint32_t face)
    {
        const std::span<const Corner> loop = m_cutter.loopOf(face);
        m_loop.assign(loop.begin(), loop.end());
    }

    /// The middle, then vertices on those of its edges that no face before has cut.
    void divideToCorners(std::uint32_t face)
    {
        takeLoop(face);
        std::erase_if(m_loop, [this](const Corner& corner) {
            return m_cutter.vertexAt(corner) >= m_topology.vertexCount;
        });
        const std::uint32_t middle = m_cutter.rewriter().addPoint(toFloat(middleOf(1)));
        const std::uint32_t uvs = uvsInMiddle(1);
        for (std::uint32_t side = 0; side < cornerCount(face); ++side) {
            const std::uint32_t edge = edgeAt(face, side);
            if (m_edgeKinds[edge] == EdgeKind::Whole) {
                m_edgeKinds[edge] = EdgeKind::Halved;
                m_cutter.splitEdge(edge, .5);
            }
        }
        takeLoop(face);
        if (m_loop.size() == std::size_t{2} * cornerCount(face)) {
            makeCorners(face, middle, uvs);
        }
    }

    // --- grids: which edges are cut, and into how many

    std::uint32_t pieces(std::uint32_t edge) const
    {
        switch (m_edgeKinds[edge]) {
        case EdgeKind::Column:
            return m_division.u;
        case EdgeKind::Row:
            return m_division.v;
        case EdgeKind::Halved:
            return 2;
        default:
            return 1;
        }
    }

    void divideToGrids()
    {
        chooseKinds();
        splitEdges();
        for (std::size_t i = m_faces.size(); i-- > 0;) {
            const std::uint32_t face = m_faces[i];
            if (!hasHoles(face) && !m_cutter.rewriter().isFull()) {
                divideByPieces(face);
            }
        }
    }

    /// Columns run along the first edge of a face, but where a face before has chosen for one of
    /// its edges already it follows that.
    void chooseKinds()
    {
        for (const std::uint32_t face : m_faces) {
            if (!hasHoles(face) && cornerCount(face) == 4) {
                chooseKindsOf(face);
            }
        }
        if (m_division.u == 1 && m_division.v == 1) {
            return;
        }
        for (const std::uint32_t face : m_faces) {
            for (std::uint32_t side = 0; cornerCount(face) != 4 && side < cornerCount(face);
                 ++side) {
                EdgeKind& kind = m_edgeKinds[edgeAt(face, side)];
                if (!hasHoles(face) && kind == EdgeKind::Whole) {
                    kind = EdgeKind::Halved;
                }
            }
        }
    }

    void chooseKindsOf(std::uint32_t face)
    {
        bool isTurned = false;
        for (std::uint32_t side = 0; side < 4; ++side) {
            const EdgeKind kind = m_edgeKinds[edgeAt(face, side)];
            if (kind != EdgeKind::Whole) {
                isTurned = (kind == EdgeKind::Row) != (side % 2 == 1);
                break;
            }
        }
        for (std::uint32_t side = 0; side < 4; ++side) {
            EdgeKind& kind = m_edgeKinds[edgeAt(face, side)];
            if (kind == EdgeKind::Whole) {
                kind = (side % 2 == 1) != isTurned ? EdgeKind::Row : EdgeKind::Column;
            }
        }
    }

    /// From the highest number down.
    void splitEdges()
    {
        for (std::size_t i = m_edgeKinds.size(); i-- > 0 && !m_cutter.rewriter().isFull();) {
            auto rest = static_cast<std::uint32_t>(i);
            for (std::uint32_t left = pieces(rest); left > 1; --left) {
                m_cutter.splitEdge(rest, 1.0 / left);
                rest = m_cutter.lastEdge();
                if (m_cutter.rewriter().isFull()) {
                    return;
                }
            }
        }
    }

    void divideByPieces(std::uint32_t face)
    {
        const std::uint32_t count = cornerCount(face);
        std::size_t expected = 0;
        bool areHalved = true;
        for (std::uint32_t side = 0; side < count; ++side) {
            const std::uint32_t number = pieces(edgeAt(face, side));
            expected += number;
            areHalved = areHalved && number == 2;
        }
        takeLoop(face);
        if (m_loop.size() != expected || expected == count) {
            return;
        }
        if (count == 4) {
            m_u = pieces(edgeAt(face, 0));
            m_v = pieces(edgeAt(face, 1));
            if (m_u == pieces(edgeAt(face, 2)) && m_v == pieces(edgeAt(face, 3))) {
                makeGrid(face);
            }
        } else if (areHalved) {
            const std::uint32_t middle = m_cutter.rewriter().addPoint(toFloat(middleOf(2)));
            makeCorners(face, middle, uvsInMiddle(2));
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

    /// A face of four at each corner; the loop has the middles of its edges. Each begins at the
    /// middle of the edge before its corner.
    void makeCorners(std::uint32_t face, std::uint32_t middle, std::uint32_t uvs)
    {
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
                m_loop[back], m_loop[2 * corner],
                Corner{referenceTo(spokeOut, false), m_loop[2 * corner + 1].uvs},
                Corner{referenceTo(spokeBack, true), uvs}};
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

    std::size_t at(std::size_t i, std::size_t j) const { return j * (m_u + 1) + i; }

    void makeGrid(std::uint32_t face)
    {
        const std::size_t u = m_u;
        const std::size_t v = m_v;
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
        const std::size_t u = m_u;
        const std::size_t v = m_v;
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
        const std::size_t u = m_u;
        const std::size_t v = m_v;
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
    std::vector<EdgeKind> m_edgeKinds; ///< of the mesh before
    std::vector<Corner> m_loop;
    std::size_t m_u = 1; ///< of the grid that is made
    std::size_t m_v = 1;
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
        expected *= division.into == Division::Into::Fans ? 3 : 4;
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
    return repeat(mesh, faces, times, Division{.into = Division::Into::Fans});
}

std::shared_ptr<const MeshData> fanFaces(const MeshData& mesh, std::span<const std::uint32_t> faces)
{
    return repeat(mesh, faces, 1, Division{.into = Division::Into::Fans});
}

std::shared_ptr<const MeshData> subdivideToGrids(const MeshData& mesh,
                                                 std::span<const std::uint32_t> faces,
                                                 std::uint32_t u, std::uint32_t v)
{
    if (std::uint64_t{u} * v > kMaxDividedFaces ||
        cornersOf(mesh, faces) * std::uint64_t{u} * v > std::uint64_t{kMaxDividedFaces} * 4) {
        return nullptr;
    }
    return FaceDivider(mesh, faces, Division{.into = Division::Into::Grids, .u = u, .v = v}).run();
}

} // namespace host::geometry
