#include "host/geometry/mesh/shape/smoothMesh.h"

#include "host/geometry/mesh/edit/MeshLinks.h"
#include "host/geometry/mesh/shape/catmullClark.h"
#include "host/geometry/mesh/shape/creaseLevels.h"
#include "host/geometry/mesh/shape/facePlanes.h"

#include <algorithm>
#include <array>
#include <utility>

namespace host::geometry {
namespace {

/// A piece of an edge of the mesh before.
struct Piece {
    std::int32_t reference = 0;  ///< to the edge; backwards: the level's edge runs against it
    std::uint32_t place = kNone; ///< counted along the level's edge; kNone: inside a face
};

struct LevelUvs {
    std::vector<Vec2f> points;
    std::vector<std::int32_t> ids; ///< by corner; empty where no face has any
};

/// Edges in the order and direction of a first walk over faces; loose ones follow.
class FirstWalk {
public:
    explicit FirstWalk(const MeshTopology& topology) : m_references(topology.edges.size())
    {
        m_order.reserve(topology.edges.size());
        for (const std::int32_t reference : topology.corners) {
            meet(edgeOf(reference), reference < 0);
        }
        for (std::uint32_t edge = 0; edge < topology.edges.size(); ++edge) {
            meet(edge, false);
        }
    }
    /// The edges before; backwards where they are first walked so.
    const std::vector<std::int32_t>& order() const { return m_order; }
    /// A reference to an edge by its place in the order.
    std::int32_t placed(std::int32_t reference) const
    {
        const std::int32_t forward = m_references[edgeOf(reference)] - 1;
        const bool isTurned = m_order[static_cast<std::size_t>(forward)] < 0;
        return referenceTo(static_cast<std::uint32_t>(forward), (reference < 0) != isTurned);
    }

private:
    void meet(std::uint32_t edge, bool isBackwards)
    {
        if (m_references[edge] == 0) {
            m_order.push_back(referenceTo(edge, isBackwards));
            m_references[edge] = static_cast<std::int32_t>(m_order.size());
        }
    }

    std::vector<std::int32_t> m_order;
    std::vector<std::int32_t> m_references; ///< place + 1
};

/// Entries of a face of the next level, `place` of the corner that it is at coming first, in their
/// final order.
template<class T>
std::array<T, 4> turnedTo(const std::array<T, 4>& entries, std::uint32_t place)
{
    std::array<T, 4> turned{};
    for (std::uint32_t i = 0; i < 4; ++i) {
        turned[(i + place) % 4] = entries[i];
    }
    return turned;
}

class Smoother {
public:
    Smoother(const MeshData& mesh, std::uint32_t divisions, const SmoothingRules& rules)
        : m_mesh(mesh), m_divisions(divisions), m_rules(rules)
    {
        takeTopology();
        takeUvs();
        m_points = doublePoints(mesh);
        if (mesh.creases != nullptr) {
            std::vector<std::uint32_t> placeOf(m_order.size());
            for (std::uint32_t place = 0; place < m_order.size(); ++place) {
                placeOf[edgeOf(m_order[place])] = place;
            }
            applyCreases(mesh, placeOf, m_level);
        }
        std::vector<std::int32_t>().swap(m_order);
    }

    std::shared_ptr<const MeshData> run()
    {
        for (std::uint32_t step = 0; step < m_divisions; ++step) {
            divide();
        }
        auto result = std::make_shared<MeshData>(m_mesh);
        {
            const std::vector<std::uint32_t> numbers = vertexNumbers();
            result->points = finalPoints(numbers);
            result->edgeSmooth = finalFlags();
            result->topology = std::make_shared<const MeshTopology>(finalTopology(numbers));
        }
        result->lockedNormals = nullptr;
        result->creases = nullptr;
        carryFaces(*result);
        for (std::size_t set = 0; set < m_uvs.size(); ++set) {
            result->uvSets[set].points =
                std::make_shared<const std::vector<Vec2f>>(std::move(m_uvs[set].points));
            result->uvSets[set].corners =
                std::make_shared<const std::vector<std::int32_t>>(std::move(m_uvs[set].ids));
        }
        return isConsistent(*result) ? result : nullptr;
    }

private:
    void takeTopology();
    void takeUvs();
    void divide();
    void divideUvs(LevelUvs& uvs, const SubdivisionLevel& next) const;
    SubdivisionLevel nextLevel() const;
    std::vector<Piece> nextPieces() const;
    std::uint32_t placeOf(std::uint32_t face, std::uint32_t corner) const
    {
        const std::uint32_t first = m_level.faceStart[face];
        return m_level.faceStart[face + 1] - first == 4 ? corner - first : 0;
    }
    std::uint32_t before(std::uint32_t face, std::uint32_t corner) const
    {
        return corner > m_level.faceStart[face] ? corner - 1 : m_level.faceStart[face + 1] - 1;
    }
    std::int32_t half(std::int32_t reference, bool isSecond) const
    {
        const bool isBackwards = reference < 0;
        const std::uint32_t first = m_level.cornerCount() + 2 * edgeOf(reference);
        return referenceTo(first + (isSecond != isBackwards ? 1 : 0), isBackwards);
    }

    std::vector<std::uint32_t> vertexNumbers() const;
    MeshTopology finalTopology(const std::vector<std::uint32_t>& vertices);
    std::shared_ptr<const EdgeFlags> finalFlags() const;
    std::shared_ptr<const std::vector<Vec3f>>
    finalPoints(const std::vector<std::uint32_t>& numbers);
    void carryFaces(MeshData& result) const;
    std::shared_ptr<const std::vector<std::uint32_t>>
    carried(const std::vector<std::uint32_t>& faces) const;

    const MeshData& m_mesh;
    std::uint32_t m_divisions;
    const SmoothingRules& m_rules;
    SubdivisionLevel m_level;
    std::vector<Piece> m_pieces;       ///< by edge of the level
    std::vector<std::int32_t> m_order; ///< of the edges before, as references
    std::vector<Vec3d> m_points;
    std::vector<LevelUvs> m_uvs;
};

void Smoother::takeTopology()
{
    const MeshTopology& topology = *m_mesh.topology;
    const FirstWalk walk(topology);
    m_order = walk.order();
    m_level.vertexCount = topology.vertexCount;
    m_level.faceStart = topology.loopStart;
    m_level.corners.reserve(topology.corners.size());
    for (const std::int32_t reference : topology.corners) {
        m_level.corners.push_back(walk.placed(reference));
    }
    m_pieces.reserve(m_order.size());
    m_level.edges.reserve(m_order.size());
    for (const std::int32_t reference : m_order) {
        const std::uint32_t edge = edgeOf(reference);
        const MeshEdge& ends = topology.edges[edge];
        m_pieces.push_back({reference, 0});
        m_level.edges.push_back(reference >= 0 ? ends : MeshEdge{ends.end, ends.start});
        if (m_rules.keepsHardEdges) {
            m_level.isPinned.push_back(m_mesh.isSmooth(edge) ? 0 : 1);
        }
    }
}

/// Texture coordinates by vertices, and those of each by its corners.
void Smoother::takeUvs()
{
    const MeshTopology& topology = *m_mesh.topology;
    const NumberLists cornersOf = cornersOfVertices(topology);
    for (const UvSet& set : m_mesh.uvSets) {
        LevelUvs uvs;
        if (set.points != nullptr && set.corners != nullptr && !set.corners->empty()) {
            uvs.ids.assign(topology.corners.size(), -1);
            uvs.points.reserve(set.points->size());
            // The vertex that an id was last given out for, and what it became.
            std::vector<std::uint32_t> vertexOf(set.points->size(), kNone);
            std::vector<std::int32_t> newId(set.points->size());
            for (std::uint32_t vertex = 0; vertex < topology.vertexCount; ++vertex) {
                for (const std::uint32_t corner : cornersOf.of(vertex)) {
                    const std::int32_t id = (*set.corners)[corner];
                    if (id < 0) {
                        continue;
                    }
                    const auto place = static_cast<std::size_t>(id);
                    if (vertexOf[place] != vertex) {
                        vertexOf[place] = vertex;
                        newId[place] = static_cast<std::int32_t>(uvs.points.size());
                        uvs.points.push_back((*set.points)[place]);
                    }
                    uvs.ids[corner] = newId[place];
                }
            }
        }
        m_uvs.push_back(std::move(uvs));
    }
}

/// Vertices: those there are, then faces, then edges. Edges: from each edge to the middle of its
/// face, corner by corner, then the halves of each edge.
SubdivisionLevel Smoother::nextLevel() const
{
    const std::uint32_t corners = m_level.cornerCount();
    const auto edges = static_cast<std::uint32_t>(m_level.edges.size());
    const std::uint32_t faceVertex = m_level.vertexCount;
    const std::uint32_t edgeVertex = faceVertex + m_level.faceCount();
    SubdivisionLevel next;
    next.vertexCount = edgeVertex + edges;
    next.edges.resize(corners + 2 * std::size_t{edges});
    next.corners.resize(4 * std::size_t{corners});
    next.faceStart.resize(corners + std::size_t{1});
    for (std::uint32_t edge = 0; edge < edges; ++edge) {
        const MeshEdge& ends = m_level.edges[edge];
        next.edges[corners + 2 * std::size_t{edge}] = {ends.start, edgeVertex + edge};
        next.edges[corners + 2 * std::size_t{edge} + 1] = {edgeVertex + edge, ends.end};
    }
    for (std::uint32_t face = 0; face < m_level.faceCount(); ++face) {
        for (std::uint32_t corner = m_level.faceStart[face]; corner < m_level.faceStart[face + 1];
             ++corner) {
            const std::int32_t reference = m_level.corners[corner];
            const std::uint32_t last = before(face, corner);
            next.edges[corner] = {edgeVertex + edgeOf(reference), faceVertex + face};
            const std::array<std::int32_t, 4> loop{
                half(reference, false), referenceTo(corner, false), referenceTo(last, true),
                half(m_level.corners[last], true)};
            const auto turned = turnedTo(loop, placeOf(face, corner));
            std::copy(turned.begin(), turned.end(),
                      next.corners.begin() + 4 * std::ptrdiff_t{corner});
            next.faceStart[corner + 1] = 4 * (corner + 1);
        }
    }
    if (!m_level.isPinned.empty()) {
        next.isPinned.resize(next.edges.size());
        for (std::uint32_t edge = 0; edge < edges; ++edge) {
            next.isPinned[corners + 2 * std::size_t{edge}] = m_level.isPinned[edge];
            next.isPinned[corners + 2 * std::size_t{edge} + 1] = m_level.isPinned[edge];
        }
    }
    return next;
}

std::vector<Piece> Smoother::nextPieces() const
{
    std::vector<Piece> pieces(m_level.corners.size());
    pieces.reserve(pieces.size() + 2 * m_pieces.size());
    for (const Piece& piece : m_pieces) {
        const bool isInside = piece.place == kNone;
        pieces.push_back({piece.reference, isInside ? kNone : 2 * piece.place});
        pieces.push_back({piece.reference, isInside ? kNone : 2 * piece.place + 1});
    }
    return pieces;
}

void Smoother::divideUvs(LevelUvs& uvs, const SubdivisionLevel& next) const
{
    if (uvs.ids.empty()) {
        return;
    }
    SubdividedUvs step = subdividedUvs(m_level, uvs.points, uvs.ids, {}, m_rules.uvs);
    step.points.reserve(step.points.size() + m_level.faceCount() + step.firsts.size());
    std::vector<std::int32_t> faceIds(m_level.faceCount(), -1);
    const auto add = [&step](const Vec2f& point) {
        step.points.push_back(point);
        return static_cast<std::int32_t>(step.points.size()) - 1;
    };
    for (std::uint32_t face = 0; face < m_level.faceCount(); ++face) {
        if (hasAllUvs(m_level, face, uvs.ids)) {
            faceIds[face] = add(step.faces[face]);
        }
    }
    std::vector<std::int32_t> sideIds(m_level.corners.size(), -1);
    for (const std::uint32_t corner : step.firsts) {
        sideIds[corner] = add(step.sides[corner]);
    }
    std::vector<std::int32_t> ids(next.corners.size(), -1);
    for (std::uint32_t face = 0; face < m_level.faceCount(); ++face) {
        for (std::uint32_t corner = m_level.faceStart[face];
             faceIds[face] >= 0 && corner < m_level.faceStart[face + 1]; ++corner) {
            const std::array<std::int32_t, 4> loop{uvs.ids[corner], sideIds[step.side[corner]],
                                                   faceIds[face],
                                                   sideIds[step.side[before(face, corner)]]};
            const auto turned = turnedTo(loop, placeOf(face, corner));
            std::copy(turned.begin(), turned.end(), ids.begin() + 4 * std::ptrdiff_t{corner});
        }
    }
    uvs.points = std::move(step.points);
    uvs.ids = std::move(ids);
}

void Smoother::divide()
{
    SubdividedPoints points = catmullClark(m_level, m_points, {}, m_rules);
    SubdivisionLevel next = nextLevel();
    divideCreases(m_level, m_rules.creases, m_level.cornerCount(), next);
    for (LevelUvs& uvs : m_uvs) {
        divideUvs(uvs, next);
    }
    m_points = std::move(points.points);
    m_pieces = nextPieces();
    m_level = std::move(next);
}

/// The final number of each vertex: the points of the first step for faces change places with the
/// last of those for edges.
std::vector<std::uint32_t> Smoother::vertexNumbers() const
{
    std::vector<std::uint32_t> vertexAt(m_level.vertexCount);
    for (std::uint32_t vertex = 0; vertex < m_level.vertexCount; ++vertex) {
        vertexAt[vertex] = vertex;
    }
    const std::size_t first = m_mesh.topology->vertexCount;
    const std::size_t faces = m_mesh.topology->faceCount();
    const std::size_t edges = m_mesh.topology->edges.size();
    for (std::size_t face = 0; m_divisions > 0 && face < faces; ++face) {
        std::swap(vertexAt[first + face], vertexAt[first + edges + face]);
    }
    if (faces <= edges) {
        return vertexAt; // they change places in pairs
    }
    std::vector<std::uint32_t> numbers(vertexAt.size());
    for (std::uint32_t place = 0; place < vertexAt.size(); ++place) {
        numbers[vertexAt[place]] = place;
    }
    return numbers;
}

std::shared_ptr<const std::vector<Vec3f>>
Smoother::finalPoints(const std::vector<std::uint32_t>& numbers)
{
    auto points = std::make_shared<std::vector<Vec3f>>(numbers.size());
    for (std::size_t vertex = 0; vertex < numbers.size(); ++vertex) {
        (*points)[numbers[vertex]] = toFloat(m_points[vertex]);
    }
    std::vector<Vec3d>().swap(m_points);
    return points;
}

MeshTopology Smoother::finalTopology(const std::vector<std::uint32_t>& vertices)
{
    const MeshTopology& before = *m_mesh.topology;
    const std::uint32_t pieces = 1U << m_divisions;
    MeshTopology topology;
    topology.vertexCount = m_level.vertexCount;
    topology.edges.reserve(m_level.edges.size());
    topology.edges.resize(before.edges.size() * pieces);
    // The final reference to each edge of the level; 0 and isKnown false while it has none.
    std::vector<std::int32_t> references(m_level.edges.size());
    std::vector<bool> isKnown(m_level.edges.size());
    for (std::uint32_t edge = 0; edge < m_pieces.size(); ++edge) {
        const Piece& piece = m_pieces[edge];
        if (piece.place == kNone) {
            continue;
        }
        const std::uint32_t start = vertices[m_level.edges[edge].start];
        const std::uint32_t end = vertices[m_level.edges[edge].end];
        const bool isTurned = piece.reference < 0;
        const std::uint32_t place = isTurned ? pieces - 1 - piece.place : piece.place;
        const std::uint32_t number = edgeOf(piece.reference) * pieces + place;
        isKnown[edge] = true;
        references[edge] = referenceTo(number, isTurned);
        topology.edges[number] = isTurned ? MeshEdge{end, start} : MeshEdge{start, end};
    }
    std::vector<Piece>().swap(m_pieces);
    topology.corners.reserve(m_level.corners.size());
    for (const std::int32_t reference : m_level.corners) {
        const std::uint32_t edge = edgeOf(reference);
        const bool isBackwards = reference < 0;
        if (!isKnown[edge]) {
            const MeshEdge& ends = m_level.edges[edge];
            const auto start = vertices[isBackwards ? ends.end : ends.start];
            const auto end = vertices[isBackwards ? ends.start : ends.end];
            isKnown[edge] = true;
            references[edge] =
                referenceTo(static_cast<std::uint32_t>(topology.edges.size()), isBackwards);
            topology.edges.push_back({start, end});
        }
        topology.corners.push_back(isBackwards ? reversed(references[edge]) : references[edge]);
    }
    topology.loopStart = std::move(m_level.faceStart);
    return topology;
}

/// Pieces of edges come first, those of each edge together.
std::shared_ptr<const EdgeFlags> Smoother::finalFlags() const
{
    if (!m_rules.propagatesHardEdges || m_mesh.edgeSmooth == nullptr) {
        return nullptr;
    }
    EdgeFlags flags;
    flags.reserve(m_level.edges.size());
    for (const std::uint8_t flag : *m_mesh.edgeSmooth) {
        flags.insert(flags.end(), std::size_t{1} << m_divisions, flag);
    }
    flags.resize(m_level.edges.size(), 1);
    return shareEdgeFlags(std::move(flags));
}

std::shared_ptr<const std::vector<std::uint32_t>>
Smoother::carried(const std::vector<std::uint32_t>& faces) const
{
    auto list = std::make_shared<std::vector<std::uint32_t>>();
    const std::uint32_t each = 1U << (2 * (m_divisions - 1));
    for (const std::uint32_t face : faces) {
        const std::uint32_t end = m_mesh.topology->endCorner(face) * each;
        for (std::uint32_t made = m_mesh.topology->firstCorner(face) * each; made < end; ++made) {
            list->push_back(made);
        }
    }
    return list;
}

void Smoother::carryFaces(MeshData& result) const
{
    for (FaceGroup& group : result.groups) {
        if (group.faces != nullptr) {
            group.faces = carried(*group.faces);
        }
    }
    if (result.invisibleFaces != nullptr) {
        result.invisibleFaces = carried(*result.invisibleFaces);
    }
}

bool hasHoles(const MeshTopology& topology)
{
    return topology.loopCount() != topology.faceCount();
}

} // namespace

std::uint32_t possibleDivisions(const MeshData& mesh, std::uint32_t divisions)
{
    std::size_t faces = mesh.topology->corners.size();
    std::uint32_t possible = 0;
    while (possible < std::min(divisions, kMostDivisions) && faces <= kMostSmoothedFaces &&
           mesh.topology->edges.size() <= (kMostSmoothedFaces >> possible)) {
        ++possible;
        faces *= 4;
    }
    return possible;
}

std::shared_ptr<const MeshData> smoothMesh(const MeshData& mesh, std::uint32_t divisions,
                                           const SmoothingRules& rules)
{
    if (hasHoles(*mesh.topology) || mesh.points == nullptr ||
        possibleDivisions(mesh, divisions) != divisions) {
        return nullptr;
    }
    if (divisions == 0 || mesh.topology->corners.empty()) {
        return std::make_shared<MeshData>(mesh);
    }
    return Smoother(mesh, divisions, rules).run();
}

} // namespace host::geometry
