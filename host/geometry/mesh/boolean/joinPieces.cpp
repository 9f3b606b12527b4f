#include "host/geometry/mesh/boolean/joinPieces.h"

#include "host/geometry/mesh/boolean/HalfEdges.h"
#include "host/geometry/mesh/boolean/PieceCorners.h"
#include "host/geometry/mesh/boolean/PieceOutlines.h"
#include "host/geometry/mesh/edit/EdgeTable.h"
#include "host/geometry/mesh/edit/MeshLinks.h"
#include "host/geometry/mesh/edit/MeshRewriter.h"

#include <algorithm>
#include <cstddef>
#include <tuple>
#include <utility>
#include <vector>

namespace host::geometry {
namespace {

/// The face of each triangle of the solid.
std::vector<std::uint32_t> facesOf(const Solid& solid, const Triangulation& triangles)
{
    std::vector<std::uint32_t> ofSources(triangles.corners.size() / 3);
    for (std::uint32_t face = 0; face + 1 < triangles.faceFirstTriangle.size(); ++face) {
        std::fill(ofSources.begin() + triangles.faceFirstTriangle[face],
                  ofSources.begin() + triangles.faceFirstTriangle[face + 1], face);
    }
    std::vector<std::uint32_t> faces;
    faces.reserve(solid.triangles.size());
    for (const SolidTriangle& triangle : solid.triangles) {
        faces.push_back(ofSources[triangle.source]);
    }
    return faces;
}

/// The edges that two faces have in common.
class SharedEdges {
public:
    explicit SharedEdges(const MeshTopology& topology)
    {
        const CornerLinks links(topology);
        const NumberLists corners = cornersOfEdges(topology);
        for (std::uint32_t edge = 0; edge < topology.edges.size(); ++edge) {
            const auto both = corners.of(edge);
            if (both.size() == 2) {
                const auto [low, high] = std::minmax({links.face(both[0]), links.face(both[1])});
                m_shared.push_back({low, high, edge});
            }
        }
        std::sort(m_shared.begin(), m_shared.end());
    }

    /// The one that comes nearest to a place; kNone where there is none.
    std::uint32_t find(std::uint32_t faceA, std::uint32_t faceB, const Vec3d& place,
                       const CutMeshes& before) const
    {
        const auto [low, high] = std::minmax({faceA, faceB});
        std::uint32_t nearest = kNone;
        double least = 0;
        for (auto at = std::lower_bound(m_shared.begin(), m_shared.end(), Shared{low, high, 0});
             at != m_shared.end() && at->low == low && at->high == high; ++at) {
            const double distance = distanceTo(at->edge, place, before);
            if (nearest == kNone || distance < least) {
                nearest = at->edge;
                least = distance;
            }
        }
        return nearest;
    }

private:
    struct Shared {
        std::uint32_t low = 0;
        std::uint32_t high = 0;
        std::uint32_t edge = 0;
        friend auto operator<=>(const Shared&, const Shared&) = default;
    };

    static double distanceTo(std::uint32_t edge, const Vec3d& place, const CutMeshes& before)
    {
        const MeshEdge& ends = before.mesh.topology->edges[edge];
        const Vec3d start = before.grid.place((*before.mesh.points)[ends.start]);
        const Vec3d way = before.grid.place((*before.mesh.points)[ends.end]) - start;
        const double square = dot(way, way);
        const double share = square > 0 ? dot(place - start, way) / square : 0;
        return length(start + way * std::clamp(share, 0.0, 1.0) - place);
    }

    std::vector<Shared> m_shared;
};

/// Writes the pieces as faces.
class PieceWriter {
public:
    PieceWriter(const CutMeshes& before, const Solid& solid, const HalfEdges& sides,
                std::vector<std::uint32_t> faces)
        : m_before(before)
        , m_solid(solid)
        , m_sides(sides)
        , m_faces(std::move(faces))
        , m_corners(before, solid, m_faces)
        , m_outlines(solid, sides, m_faces)
        , m_shared(*before.mesh.topology)
        , m_table(before.mesh.topology->vertexCount)
        , m_rewriter(before.mesh)
        , m_edges(sides.count(), kNone)
        , m_isTaken(before.mesh.topology->edges.size())
    {
    }

    std::shared_ptr<const MeshData> run();

private:
    /// A loop of a face: where it begins, and what it is ordered by.
    struct Place {
        std::uint32_t face = 0;
        bool isHole = false;
        std::uint32_t corner = kNone; ///< the lowest corner before
        std::uint32_t vertex = kNone; ///< the vertex there, or the lowest
        std::uint32_t loop = 0;
        std::uint32_t first = 0; ///< in the path
        friend auto operator<=>(const Place&, const Place&) = default;
    };

    void addPoints();
    void fillTable();
    std::vector<std::vector<Place>> placePieces() const;
    Place placeOf(std::uint32_t loop) const;
    void writeWhole(std::uint32_t& nextPart, std::uint32_t endFace);
    void writePiece(const std::vector<Place>& loops);
    void writeLoop(const Place& place);
    std::int32_t edgeFor(std::uint32_t side, std::uint32_t lastSide, std::uint32_t nextSide);
    std::uint32_t makeEdge(std::uint32_t side, std::uint32_t lastSide, std::uint32_t nextSide);
    std::uint32_t partOf(std::uint32_t face) const
    {
        const auto& firsts = m_before.firstFaces;
        return static_cast<std::uint32_t>(std::upper_bound(firsts.begin(), firsts.end(), face) -
                                          firsts.begin() - 1);
    }

    const CutMeshes& m_before;
    const Solid& m_solid;
    const HalfEdges& m_sides;
    std::vector<std::uint32_t> m_faces;
    PieceCorners m_corners;
    PieceOutlines m_outlines;
    SharedEdges m_shared;
    EdgeTable m_table;
    MeshRewriter m_rewriter;
    std::vector<std::uint32_t> m_edges;  ///< by the first side of each, either way
    std::vector<std::uint8_t> m_isTaken; ///< of each edge before: 1 where a border has it
};

void PieceWriter::addPoints()
{
    for (const std::uint32_t point : m_corners.newPoints()) {
        m_rewriter.addPoint(m_before.grid.point(m_solid.points[point]));
    }
}

void PieceWriter::fillTable()
{
    const auto& edges = m_before.mesh.topology->edges;
    m_table.reserve(edges.size());
    for (std::uint32_t edge = 0; edge < edges.size(); ++edge) {
        if (m_table.find(edges[edge].start, edges[edge].end) == kNone) {
            m_table.add(edges[edge].start, edges[edge].end, edge);
        }
    }
}

/// Begins at the lowest corner before, or else at the lowest vertex.
PieceWriter::Place PieceWriter::placeOf(std::uint32_t loop) const
{
    const PieceOutlines::Loop& outline = m_outlines.loops()[loop];
    Place place;
    place.face = m_faces[outline.piece];
    place.loop = loop;
    for (std::uint32_t i = outline.begin; i < outline.end; ++i) {
        const std::uint32_t side = m_outlines.path()[i];
        const std::uint32_t point = m_sides.start(side);
        const std::uint32_t corner = m_corners.sourceCorner(side / 3, point);
        const std::uint32_t vertex = m_corners.vertexOf(point);
        if (std::tie(corner, vertex) < std::tie(place.corner, place.vertex)) {
            place.corner = corner;
            place.vertex = vertex;
            place.first = i;
        }
    }
    return place;
}

/// The loops of each piece, the outer one first; pieces by their faces, then by where they begin.
std::vector<std::vector<PieceWriter::Place>> PieceWriter::placePieces() const
{
    const auto& loops = m_outlines.loops();
    std::vector<std::uint32_t> outerOf(m_solid.triangles.size(), kNone);
    const auto sizeOf = [&](std::uint32_t loop) {
        return dot(loops[loop].area, m_outlines.areaOf(loops[loop].piece));
    };
    for (std::uint32_t loop = 0; loop < loops.size(); ++loop) {
        std::uint32_t& outer = outerOf[loops[loop].piece];
        outer = outer == kNone || sizeOf(loop) > sizeOf(outer) ? loop : outer;
    }
    std::vector<std::vector<Place>> pieces;
    std::vector<std::uint32_t> pieceNumbers(m_solid.triangles.size(), kNone);
    for (std::uint32_t loop = 0; loop < loops.size(); ++loop) {
        std::uint32_t& number = pieceNumbers[loops[loop].piece];
        if (number == kNone) {
            number = static_cast<std::uint32_t>(pieces.size());
            pieces.emplace_back();
        }
        Place place = placeOf(loop);
        place.isHole = outerOf[loops[loop].piece] != loop;
        pieces[number].push_back(place);
    }
    for (auto& piece : pieces) {
        std::sort(piece.begin(), piece.end());
    }
    std::sort(pieces.begin(), pieces.end(),
              [](const auto& a, const auto& b) { return a.front() < b.front(); });
    return pieces;
}

/// An edge from the start of a side to the start of the next that counts; `lastSide` is the one
/// before that.
std::uint32_t PieceWriter::makeEdge(std::uint32_t side, std::uint32_t lastSide,
                                    std::uint32_t nextSide)
{
    const std::uint32_t start = m_sides.start(side);
    const std::uint32_t end = m_sides.start(nextSide);
    const std::uint32_t face = m_faces[side / 3];
    const std::uint32_t other = m_faces[m_sides.beyond(lastSide) / 3];
    const bool isCut = partOf(face) != partOf(other);
    if (!m_corners.isNew(start) && !m_corners.isNew(end)) {
        const std::uint32_t known =
            m_table.find(m_corners.vertexOf(start), m_corners.vertexOf(end));
        if (known != kNone && m_isTaken[known] == 0) {
            m_isTaken[known] = 1;
            m_rewriter.edgeSmooth()[known] = isCut ? 0 : m_rewriter.edgeSmooth()[known];
            return known;
        }
    }
    const Vec3d middle = (m_solid.points[start] + m_solid.points[end]) * 0.5;
    const std::uint32_t source = isCut ? kNone : m_shared.find(face, other, middle, m_before);
    const bool isSmooth = source != kNone && m_rewriter.edgeSmooth()[source] != 0;
    return m_rewriter.addEdge(m_corners.vertexOf(start), m_corners.vertexOf(end), isSmooth,
                              source == kNone ? kNoSource : source);
}

std::int32_t PieceWriter::edgeFor(std::uint32_t side, std::uint32_t lastSide,
                                  std::uint32_t nextSide)
{
    std::uint32_t& edge = m_edges[side];
    if (edge == kNone) {
        edge = makeEdge(side, lastSide, nextSide);
        m_edges[m_sides.beyond(lastSide)] = edge;
    }
    const bool isForward =
        edge < m_rewriter.edges().size() &&
        m_rewriter.edges()[edge].start == m_corners.vertexOf(m_sides.start(side));
    return referenceTo(edge, !isForward);
}

void PieceWriter::writeLoop(const Place& place)
{
    const PieceOutlines::Loop& loop = m_outlines.loops()[place.loop];
    const std::vector<std::uint32_t>& path = m_outlines.path();
    std::vector<std::int32_t> uvIds(m_rewriter.uvSetCount());
    std::uint32_t at = place.first;
    for (std::uint32_t i = loop.begin; i < loop.end; ++i) {
        const std::uint32_t side = path[at];
        at = at + 1 == loop.end ? loop.begin : at + 1;
        std::uint32_t last = side; // sides between are those of points that went
        while (m_sides.end(last) != m_sides.start(path[at])) {
            last = m_outlines.nextOnBorder(last);
        }
        const std::uint32_t point = m_sides.start(side);
        for (std::size_t set = 0; set < uvIds.size(); ++set) {
            uvIds[set] = m_corners.uvId(set, side / 3, point, m_rewriter);
        }
        m_rewriter.addCorner(edgeFor(side, last, path[at]), uvIds);
    }
    m_rewriter.endLoop();
}

void PieceWriter::writePiece(const std::vector<Place>& loops)
{
    m_rewriter.beginFace(loops.front().face);
    for (const Place& loop : loops) {
        writeLoop(loop);
    }
    m_rewriter.endFace();
}

/// The parts before a face that stay as they are.
void PieceWriter::writeWhole(std::uint32_t& nextPart, std::uint32_t endFace)
{
    const auto& firsts = m_before.firstFaces;
    for (; nextPart < firsts.size() && firsts[nextPart] < endFace; ++nextPart) {
        if (m_before.areWhole[nextPart] != 0) {
            m_rewriter.copyFaces(firsts[nextPart], nextPart + 1 < firsts.size()
                                                       ? firsts[nextPart + 1]
                                                       : m_before.mesh.topology->faceCount());
        }
    }
}

std::shared_ptr<const MeshData> PieceWriter::run()
{
    std::vector<std::uint8_t> isKept(m_solid.points.size());
    for (std::uint32_t point = 0; point < isKept.size(); ++point) {
        isKept[point] = m_corners.isNew(point) ? 0 : 1;
    }
    m_outlines.straighten(isKept);
    addPoints();
    fillTable();
    std::uint32_t nextPart = 0;
    for (const std::vector<Place>& piece : placePieces()) {
        writeWhole(nextPart, piece.front().face);
        writePiece(piece);
    }
    writeWhole(nextPart, m_before.mesh.topology->faceCount());
    return m_rewriter.finish({.edges = true, .points = true, .uvs = true});
}

} // namespace

std::shared_ptr<const MeshData> joinPieces(const CutMeshes& before, const Solid& left)
{
    std::vector<std::uint32_t> faces = facesOf(left, before.triangles);
    Solid cut{left.points, {}};
    for (std::size_t i = 0; i < faces.size(); ++i) {
        const auto part =
            std::upper_bound(before.firstFaces.begin(), before.firstFaces.end(), faces[i]) -
            before.firstFaces.begin() - 1;
        if (before.areWhole[static_cast<std::size_t>(part)] == 0) {
            cut.triangles.push_back(left.triangles[i]);
        }
    }
    const HalfEdges sides(cut.triangles);
    if (!sides.isClosed()) {
        return nullptr;
    }
    return PieceWriter(before, cut, sides, facesOf(cut, before.triangles)).run();
}

} // namespace host::geometry
