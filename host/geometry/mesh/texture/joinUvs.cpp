#include "host/geometry/mesh/texture/joinUvs.h"

#include "host/geometry/mesh/edit/MeshLinks.h"
#include "host/geometry/mesh/texture/UvEditor.h"
#include "host/geometry/mesh/texture/uvPieces.h"

#include <algorithm>
#include <cmath>

namespace host::geometry {
namespace {

/// The ids at both ends of an edge, as one of its faces has them.
struct Side {
    std::int32_t start = -1;
    std::int32_t end = -1;

    bool isMapped() const { return start >= 0 && end >= 0; }
};

/// Pieces that move as wholes and grow together. Each id is moved no more often than its piece
/// doubles, so that all moves together take no more than n log n.
class GrowingPieces {
public:
    GrowingPieces(UvEditor& editor, const UvPieces& pieces)
        : m_editor(editor), m_pieceOfId(pieces.ofId), m_members(pieces.count), m_faces(pieces.count)
    {
        for (std::uint32_t id = 0; id < m_pieceOfId.size(); ++id) {
            if (m_pieceOfId[id] != kNone) {
                m_members[m_pieceOfId[id]].push_back(id);
            }
        }
        for (const std::uint32_t piece : pieces.ofFace) {
            if (piece != kNone) {
                ++m_faces[piece];
            }
        }
    }

    /// Brings the pieces of two sides together; false where the one to be moved is too large.
    bool bringTogether(const Side& first, const Side& second, std::uint32_t mostFaces)
    {
        const std::uint32_t a = pieceOf(first.start);
        const std::uint32_t b = pieceOf(second.start);
        if (a == b) {
            return true;
        }
        const bool isFirstSmaller = m_faces[a] < m_faces[b];
        const std::uint32_t small = isFirstSmaller ? a : b;
        const std::uint32_t large = isFirstSmaller ? b : a;
        if (m_faces[small] > mostFaces) {
            return false;
        }
        move(small, isFirstSmaller ? first : second, isFirstSmaller ? second : first);
        for (const std::uint32_t id : m_members[small]) {
            m_pieceOfId[id] = large;
        }
        m_members[large].insert(m_members[large].end(), m_members[small].begin(),
                                m_members[small].end());
        m_members[small] = {};
        m_faces[large] += m_faces[small];
        return true;
    }

private:
    std::uint32_t pieceOf(std::int32_t id) const
    {
        return m_pieceOfId[static_cast<std::size_t>(id)];
    }
    Vec2f& point(std::int32_t id) { return m_editor.points()[static_cast<std::size_t>(id)]; }

    /// Turns and scales by the quotient of the two edges as complex numbers.
    void move(std::uint32_t piece, const Side& from, const Side& to)
    {
        const Vec2f origin = point(from.start);
        const Vec2f target = point(to.start);
        const double fromU = double{point(from.end).x} - origin.x;
        const double fromV = double{point(from.end).y} - origin.y;
        const double toU = double{point(to.end).x} - target.x;
        const double toV = double{point(to.end).y} - target.y;
        const double square = fromU * fromU + fromV * fromV;
        double real = (toU * fromU + toV * fromV) / square;
        double imaginary = (toV * fromU - toU * fromV) / square;
        if (!std::isfinite(real + imaginary)) {
            real = 1;
            imaginary = 0;
        }
        for (const std::uint32_t id : m_members[piece]) {
            Vec2f& moved = m_editor.points()[id];
            const double u = double{moved.x} - origin.x;
            const double v = double{moved.y} - origin.y;
            const auto newU = static_cast<float>(target.x + u * real - v * imaginary);
            const auto newV = static_cast<float>(target.y + u * imaginary + v * real);
            if (std::isfinite(newU + newV)) {
                moved = {newU, newV};
            }
        }
    }

    UvEditor& m_editor;
    std::vector<std::uint32_t> m_pieceOfId;
    std::vector<std::vector<std::uint32_t>> m_members;
    std::vector<std::uint32_t> m_faces;
};

/// The ids of the named ones that each vertex has, vertex after vertex, each once and ascending.
std::vector<std::pair<std::uint32_t, std::uint32_t>>
idsOfVertices(const UvEditor& editor, const std::vector<std::int32_t>& corners,
              std::span<const std::uint32_t> ids, std::size_t idCount)
{
    std::vector<bool> isNamed(idCount);
    for (const std::uint32_t id : ids) {
        isNamed[id] = true;
    }
    std::vector<std::pair<std::uint32_t, std::uint32_t>> found;
    for (std::uint32_t corner = 0; corner < corners.size(); ++corner) {
        if (corners[corner] >= 0 && isNamed[static_cast<std::size_t>(corners[corner])]) {
            found.push_back({editor.topology().cornerVertex(corner),
                             static_cast<std::uint32_t>(corners[corner])});
        }
    }
    std::sort(found.begin(), found.end());
    found.erase(std::unique(found.begin(), found.end()), found.end());
    return found;
}

/// Joins those of one vertex that are near each other.
void joinNear(const std::vector<Vec2f>& points, std::vector<std::uint32_t>& ids, double distance,
              DisjointSets& sets)
{
    const auto placeOf = [&points](std::uint32_t id) {
        return std::isnan(points[id].x) ? 0 : points[id].x; // numbers that can be put in order
    };
    std::sort(ids.begin(), ids.end(), [&placeOf](std::uint32_t a, std::uint32_t b) {
        return placeOf(a) != placeOf(b) ? placeOf(a) < placeOf(b) : a < b;
    });
    const std::size_t reach = ids.size() <= kMaxUvPairs ? ids.size() : 1;
    for (std::size_t i = 0; i < ids.size(); ++i) {
        const Vec2f& a = points[ids[i]];
        for (std::size_t j = i + 1; j < ids.size() && j <= i + reach; ++j) {
            const Vec2f& b = points[ids[j]];
            const double u = double{b.x} - a.x;
            const double v = double{b.y} - a.y;
            if (u > distance) {
                break;
            }
            if (u * u + v * v <= distance * distance) {
                sets.join(ids[i], ids[j]);
            }
        }
    }
}

} // namespace

std::shared_ptr<const MeshData> moveAndSewUvs(const MeshData& mesh, std::size_t set,
                                              std::span<const std::uint32_t> edges,
                                              std::uint32_t mostFaces)
{
    const MeshTopology& topology = *mesh.topology;
    UvEditor editor(mesh, set);
    const CornerLinks links(topology);
    const NumberLists corners = cornersOfEdges(topology);
    GrowingPieces pieces(editor, uvPieces(topology, editor.corners(), editor.points().size()));
    DisjointSets sets(editor.points().size());
    for (const std::uint32_t edge : edges) {
        Side first;
        for (const std::uint32_t corner : corners.of(edge)) {
            const std::int32_t here = editor.corners()[corner];
            const std::int32_t next = editor.corners()[links.next(corner)];
            const Side side = topology.corners[corner] >= 0 ? Side{here, next} : Side{next, here};
            if (first.isMapped() && side.isMapped() &&
                pieces.bringTogether(first, side, mostFaces)) {
                sets.join(static_cast<std::uint32_t>(first.start),
                          static_cast<std::uint32_t>(side.start));
                sets.join(static_cast<std::uint32_t>(first.end),
                          static_cast<std::uint32_t>(side.end));
            }
            first = first.isMapped() ? first : side;
        }
    }
    editor.merge(sets);
    editor.removeUnused();
    return editor.finish();
}

std::shared_ptr<const MeshData> mergeUvs(const MeshData& mesh, std::size_t set,
                                         std::span<const std::uint32_t> ids, double distance)
{
    UvEditor editor(mesh, set);
    DisjointSets sets(editor.points().size());
    const auto found = idsOfVertices(editor, editor.corners(), ids, editor.points().size());
    std::vector<std::uint32_t> ofVertex;
    for (std::size_t i = 0; i < found.size(); ++i) {
        ofVertex.push_back(found[i].second);
        if (i + 1 == found.size() || found[i + 1].first != found[i].first) {
            joinNear(editor.points(), ofVertex, distance, sets);
            ofVertex.clear();
        }
    }
    editor.merge(sets);
    editor.removeUnused();
    return editor.finish();
}

} // namespace host::geometry
