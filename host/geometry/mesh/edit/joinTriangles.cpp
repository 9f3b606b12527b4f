#include "host/geometry/mesh/edit/joinTriangles.h"

#include "host/geometry/mesh/edit/MeshLinks.h"
#include "host/geometry/mesh/edit/deleteFaces.h"
#include "host/geometry/mesh/edit/dissolveEdges.h"
#include "host/geometry/mesh/polygon.h"
#include "host/math/angle.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace host::geometry {
namespace {

constexpr std::uint32_t kTriangle = 3;

struct Pair {
    double badness = 0; ///< how far the worst corner is from a right angle, radians
    std::uint32_t edge = 0;
    std::uint32_t first = 0;
    std::uint32_t second = 0;
};

class TriangleJoiner {
public:
    TriangleJoiner(const MeshData& mesh, std::span<const std::uint32_t> faces,
                   const QuadRules& rules);

    JoinedTriangles run();

private:
    void findGroups();
    bool isAllowed(std::uint32_t edge, std::uint32_t a, std::uint32_t b) const;
    bool isTextureBorder(std::uint32_t a, std::uint32_t b) const;
    Vec3d pointOf(std::uint32_t corner) const
    {
        return toDouble((*m_mesh.points)[m_topology.cornerVertex(corner)]);
    }
    Vec3d normalOf(std::uint32_t corner) const;
    double badnessOf(std::uint32_t a, std::uint32_t b) const;
    std::vector<Pair> findPairs() const;

    const MeshData& m_mesh;
    const MeshTopology& m_topology;
    QuadRules m_rules;
    CornerLinks m_links;
    NumberLists m_corners;
    std::vector<bool> m_isNamed;           ///< triangles among the faces
    std::vector<std::uint32_t> m_groupsOf; ///< a number for each mixture of groups, by face
};

TriangleJoiner::TriangleJoiner(const MeshData& mesh, std::span<const std::uint32_t> faces,
                               const QuadRules& rules)
    : m_mesh(mesh)
    , m_topology(*mesh.topology)
    , m_rules(rules)
    , m_links(m_topology)
    , m_corners(cornersOfEdges(m_topology))
    , m_isNamed(m_topology.faceCount())
    , m_groupsOf(m_topology.faceCount())
{
    for (const std::uint32_t face : faces) {
        if (face < m_isNamed.size()) {
            m_isNamed[face] =
                m_topology.endCorner(face) - m_topology.firstCorner(face) == kTriangle;
        }
    }
    findGroups();
}

/// Faces with the same number are in the same groups, but for mixtures that happen to mix alike.
void TriangleJoiner::findGroups()
{
    constexpr std::uint32_t kFactor = 2654435761U;
    std::uint32_t number = 0;
    for (const FaceGroup& group : m_mesh.groups) {
        ++number;
        if (group.faces != nullptr) {
            for (const std::uint32_t face : *group.faces) {
                m_groupsOf[face] = (m_groupsOf[face] ^ number) * kFactor;
            }
        }
    }
}

/// Corners a and b leave along the same edge in opposite ways.
bool TriangleJoiner::isTextureBorder(std::uint32_t a, std::uint32_t b) const
{
    return std::any_of(m_mesh.uvSets.begin(), m_mesh.uvSets.end(), [&](const UvSet& set) {
        if (set.corners == nullptr || set.corners->empty()) {
            return false;
        }
        const std::vector<std::int32_t>& ids = *set.corners;
        return ids[a] != ids[m_links.next(b)] || ids[b] != ids[m_links.next(a)];
    });
}

Vec3d TriangleJoiner::normalOf(std::uint32_t corner) const
{
    const Vec3d here = pointOf(corner);
    return cross(pointOf(m_links.next(corner)) - here, pointOf(m_links.previous(corner)) - here);
}

bool TriangleJoiner::isAllowed(std::uint32_t edge, std::uint32_t a, std::uint32_t b) const
{
    const std::uint32_t first = m_links.face(a);
    const std::uint32_t second = m_links.face(b);
    if (first == second || !m_isNamed[first] || !m_isNamed[second] ||
        (m_topology.corners[a] < 0) == (m_topology.corners[b] < 0) ||
        (m_rules.keepsHardEdges && !m_mesh.isSmooth(edge)) ||
        (m_rules.keepsGroupBorders && m_groupsOf[first] != m_groupsOf[second]) ||
        (m_rules.keepsTextureBorders && isTextureBorder(a, b))) {
        return false;
    }
    const Vec3d n = normalOf(a);
    const Vec3d m = normalOf(b);
    return angleOf(length(cross(n, m)), dot(n, m)) <= m_rules.angle;
}

double TriangleJoiner::badnessOf(std::uint32_t a, std::uint32_t b) const
{
    const std::array<Vec3d, 4> quad{pointOf(m_links.next(a)), pointOf(m_links.previous(a)),
                                    pointOf(a), pointOf(m_links.previous(b))};
    double worst = 0;
    for (std::size_t i = 0; i < quad.size(); ++i) {
        const Vec3d ahead = quad[(i + 1) % 4] - quad[i];
        const Vec3d back = quad[(i + 3) % 4] - quad[i];
        const double corner = angleOf(length(cross(ahead, back)), dot(ahead, back));
        worst = std::fmax(worst, std::fabs(corner - std::numbers::pi / 2));
    }
    return worst;
}

std::vector<Pair> TriangleJoiner::findPairs() const
{
    std::vector<Pair> pairs;
    for (std::uint32_t edge = 0; edge < m_topology.edges.size(); ++edge) {
        const auto corners = m_corners.of(edge);
        if (corners.size() == 2 && isAllowed(edge, corners[0], corners[1])) {
            pairs.push_back({badnessOf(corners[0], corners[1]), edge, m_links.face(corners[0]),
                             m_links.face(corners[1])});
        }
    }
    return pairs;
}

JoinedTriangles TriangleJoiner::run()
{
    std::vector<Pair> pairs = findPairs();
    std::vector<std::uint32_t> choices(m_isNamed.size());
    for (const Pair& pair : pairs) {
        ++choices[pair.first];
        ++choices[pair.second];
    }
    std::sort(pairs.begin(), pairs.end(), [](const Pair& a, const Pair& b) {
        return a.badness != b.badness ? a.badness < b.badness : a.edge < b.edge;
    });
    std::vector<bool> isJoined(m_isNamed.size());
    std::vector<std::uint32_t> gone;
    for (const Pair& pair : pairs) {
        if (!isJoined[pair.first] && !isJoined[pair.second]) {
            isJoined[pair.first] = true;
            isJoined[pair.second] = true;
            gone.push_back(pair.edge);
        }
    }
    std::sort(gone.begin(), gone.end());
    return {dissolveEdges(m_mesh, gone, kCleanAll),
            std::all_of(choices.begin(), choices.end(), [](auto count) { return count < 2; })};
}

} // namespace

JoinedTriangles joinTriangles(const MeshData& mesh, std::span<const std::uint32_t> faces,
                              const QuadRules& rules)
{
    return TriangleJoiner(mesh, faces, rules).run();
}

} // namespace host::geometry
