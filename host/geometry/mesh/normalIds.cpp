#include "host/geometry/mesh/normals.h"

namespace host::geometry {
namespace {

constexpr std::uint32_t kNone = 0xffffffff;

/// The corners at an edge's two vertices in the first face that uses it.
struct EdgeCorners {
    std::uint32_t atStart = kNone;
    std::uint32_t atEnd = kNone;
};

/// Disjoint sets of corners; each is known by its lowest corner. `parent` never points upward.
class CornerSets {
public:
    explicit CornerSets(std::size_t count) : m_parent(count)
    {
        for (std::size_t i = 0; i < count; ++i) {
            m_parent[i] = static_cast<std::uint32_t>(i);
        }
    }

    void unite(std::uint32_t a, std::uint32_t b)
    {
        a = lowest(a);
        b = lowest(b);
        if (a < b) {
            m_parent[b] = a;
        } else {
            m_parent[a] = b;
        }
    }

    /// Replaces every entry by the number of its set, in the order of the lowest corners.
    std::uint32_t number(std::vector<std::uint32_t>& numbers)
    {
        std::uint32_t count = 0;
        for (std::size_t corner = 0; corner < m_parent.size(); ++corner) {
            const std::uint32_t parent = m_parent[corner];
            m_parent[corner] = parent == corner ? count++ : m_parent[parent];
        }
        numbers = std::move(m_parent);
        return count;
    }

private:
    std::uint32_t lowest(std::uint32_t corner)
    {
        while (m_parent[corner] != corner) {
            m_parent[corner] = m_parent[m_parent[corner]];
            corner = m_parent[corner];
        }
        return corner;
    }

    std::vector<std::uint32_t> m_parent;
};

void joinAcross(EdgeCorners& edge, std::uint32_t atStart, std::uint32_t atEnd, CornerSets& sets)
{
    if (edge.atStart == kNone) {
        edge = {atStart, atEnd};
        return;
    }
    sets.unite(edge.atStart, atStart);
    sets.unite(edge.atEnd, atEnd);
}

} // namespace

NormalIds computeNormalIds(const MeshData& mesh)
{
    const MeshTopology& topology = *mesh.topology;
    CornerSets sets(topology.corners.size());
    {
        std::vector<EdgeCorners> edges(topology.edges.size());
        for (std::uint32_t loop = 0; loop < topology.loopCount(); ++loop) {
            const std::uint32_t first = topology.loopStart[loop];
            const std::uint32_t end = topology.loopStart[loop + 1];
            for (std::uint32_t corner = first; corner < end; ++corner) {
                const std::int32_t reference = topology.corners[corner];
                const bool isForward = reference >= 0;
                const auto edge =
                    static_cast<std::uint32_t>(isForward ? reference : -(reference + 1));
                if (!mesh.isSmooth(edge)) {
                    continue;
                }
                const std::uint32_t next = corner + 1 == end ? first : corner + 1;
                joinAcross(edges[edge], isForward ? corner : next, isForward ? next : corner, sets);
            }
        }
    }
    NormalIds ids;
    ids.count = sets.number(ids.ofCorner);
    return ids;
}

} // namespace host::geometry
