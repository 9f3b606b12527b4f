#include "host/geometry/mesh/texture/cutUvs.h"

#include "host/geometry/mesh/edit/MeshLinks.h"
#include "host/geometry/mesh/texture/UvEditor.h"

#include <algorithm>

namespace host::geometry {
namespace {

/// Separates the corners at one vertex after the other.
class Cutter {
public:
    Cutter(UvEditor& editor, std::span<const std::uint32_t> edges)
        : m_editor(editor)
        , m_links(editor.topology())
        , m_cornersOfVertices(cornersOfVertices(editor.topology()))
        , m_isCut(editor.topology().edges.size())
        , m_isDone(editor.topology().vertexCount)
    {
        for (const std::uint32_t edge : edges) {
            m_isCut[edge] = true;
        }
    }

    void separate(std::uint32_t vertex)
    {
        if (m_isDone[vertex]) {
            return;
        }
        m_isDone[vertex] = true;
        const std::span<const std::uint32_t> corners = m_cornersOfVertices.of(vertex);
        DisjointSets groups = groupsOf(corners);
        giveIds(corners, groups);
    }

private:
    struct Spoke {
        std::uint32_t edge = 0;
        std::uint32_t place = 0; ///< of the corner at the vertex
    };

    /// Corners are together where an edge between them is not cut and they share an id.
    DisjointSets groupsOf(std::span<const std::uint32_t> corners)
    {
        const std::vector<std::int32_t>& references = m_editor.topology().corners;
        m_spokes.clear();
        for (std::uint32_t place = 0; place < corners.size(); ++place) {
            const std::uint32_t corner = corners[place];
            m_spokes.push_back({edgeOf(references[corner]), place});
            m_spokes.push_back({edgeOf(references[m_links.previous(corner)]), place});
        }
        std::sort(m_spokes.begin(), m_spokes.end(),
                  [this, corners](const Spoke& a, const Spoke& b) {
                      const std::int32_t idA = m_editor.corners()[corners[a.place]];
                      const std::int32_t idB = m_editor.corners()[corners[b.place]];
                      return a.edge != b.edge ? a.edge < b.edge
                             : idA != idB     ? idA < idB
                                              : a.place < b.place;
                  });
        DisjointSets groups(corners.size());
        for (std::size_t i = 1; i < m_spokes.size(); ++i) {
            const Spoke& a = m_spokes[i - 1];
            const Spoke& b = m_spokes[i];
            const bool isShared =
                m_editor.corners()[corners[a.place]] == m_editor.corners()[corners[b.place]];
            if (a.edge == b.edge && isShared && !m_isCut[a.edge]) {
                groups.join(a.place, b.place);
            }
        }
        return groups;
    }

    void giveIds(std::span<const std::uint32_t> corners, DisjointSets& groups)
    {
        m_owners.clear();
        for (std::uint32_t place = 0; place < corners.size(); ++place) {
            m_owners.push_back({m_editor.corners()[corners[place]], place});
        }
        std::sort(m_owners.begin(), m_owners.end());
        std::vector<std::int32_t> newIds(corners.size(), -1);
        std::vector<std::uint32_t> leaders; ///< of the groups that need a new id
        for (std::size_t i = 1; i < m_owners.size(); ++i) {
            const auto& [id, place] = m_owners[i];
            const bool isFirst = id != m_owners[i - 1].first;
            if (!isFirst && id >= 0 && groups.lowest(place) == place) {
                leaders.push_back(place);
            }
        }
        std::sort(leaders.begin(), leaders.end());
        for (const std::uint32_t place : leaders) {
            const auto id = static_cast<std::size_t>(m_editor.corners()[corners[place]]);
            newIds[place] = m_editor.add(m_editor.points()[id]);
        }
        for (std::uint32_t place = 0; place < corners.size(); ++place) {
            const std::int32_t id = newIds[groups.lowest(place)];
            if (id >= 0) {
                m_editor.corners()[corners[place]] = id;
            }
        }
    }

    UvEditor& m_editor;
    CornerLinks m_links;
    NumberLists m_cornersOfVertices;
    std::vector<bool> m_isCut;
    std::vector<bool> m_isDone;
    std::vector<Spoke> m_spokes;
    std::vector<std::pair<std::int32_t, std::uint32_t>> m_owners; ///< ids and places
};

} // namespace

std::shared_ptr<const MeshData> cutUvs(const MeshData& mesh, std::size_t set,
                                       std::span<const std::uint32_t> edges)
{
    UvEditor editor(mesh, set);
    Cutter cutter(editor, edges);
    for (const std::uint32_t edge : edges) {
        cutter.separate(mesh.topology->edges[edge].start);
        cutter.separate(mesh.topology->edges[edge].end);
    }
    return editor.finish();
}

std::shared_ptr<const MeshData> sewUvs(const MeshData& mesh, std::size_t set,
                                       std::span<const std::uint32_t> edges)
{
    UvEditor editor(mesh, set);
    const MeshTopology& topology = *mesh.topology;
    const CornerLinks links(topology);
    const NumberLists sides = cornersOfEdges(topology);
    DisjointSets sets(editor.points().size());
    for (const std::uint32_t edge : edges) {
        std::int32_t atStart = -1;
        std::int32_t atEnd = -1;
        const auto join = [&sets](std::int32_t& first, std::int32_t id) {
            if (first >= 0 && id >= 0) {
                sets.join(static_cast<std::uint32_t>(first), static_cast<std::uint32_t>(id));
            }
            first = first >= 0 ? first : id;
        };
        for (const std::uint32_t corner : sides.of(edge)) {
            const bool isForward = topology.corners[corner] >= 0;
            join(isForward ? atStart : atEnd, editor.corners()[corner]);
            join(isForward ? atEnd : atStart, editor.corners()[links.next(corner)]);
        }
    }
    editor.merge(sets);
    editor.removeUnused();
    return editor.finish();
}

std::shared_ptr<const MeshData> deleteUvs(const MeshData& mesh, std::size_t set,
                                          std::span<const std::uint32_t> faces)
{
    UvEditor editor(mesh, set);
    editor.clear(faces);
    editor.removeUnused();
    return editor.finish();
}

} // namespace host::geometry
