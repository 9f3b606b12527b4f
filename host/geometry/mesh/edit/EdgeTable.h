// Edges by the pair of their ends.
#pragma once

#include "host/geometry/mesh/edit/MeshLinks.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace host::geometry {

/// Each vertex has a list of its edges; two lists are searched side by side, so that an edge costs
/// no more than the shorter of them. Memory stays in the order of the edges, which is mostly that
/// of the vertices.
class EdgeTable {
public:
    /// For vertices below the count.
    explicit EdgeTable(std::size_t vertexCount) : m_first(vertexCount, kNone) {}

    void reserve(std::size_t edges) { m_entries.reserve(edges); }
    /// The edge between two vertices, either way; kNone where there is none.
    std::uint32_t find(std::uint32_t a, std::uint32_t b) const
    {
        std::uint32_t atA = m_first[a];
        std::uint32_t atB = m_first[b];
        while (atA != kNone && atB != kNone) {
            const Entry& entryA = m_entries[atA / 2];
            if (entryA.vertices[1 - atA % 2] == b) {
                return atA / 2;
            }
            const Entry& entryB = m_entries[atB / 2];
            if (entryB.vertices[1 - atB % 2] == a) {
                return atB / 2;
            }
            atA = entryA.next[atA % 2];
            atB = entryB.next[atB % 2];
        }
        return kNone;
    }
    /// For a pair that has none yet; each edge once, and numbers without large gaps between them.
    void add(std::uint32_t a, std::uint32_t b, std::uint32_t edge)
    {
        if (edge >= m_entries.size()) {
            m_entries.resize(edge + std::size_t{1});
        }
        m_entries[edge].vertices = {a, b};
        push(a, 2 * edge);
        push(b, 2 * edge + 1);
    }

private:
    /// An edge is in two lists: at its first vertex (2 * edge), at its second one (2 * edge + 1).
    struct Entry {
        std::array<std::uint32_t, 2> vertices{};
        std::array<std::uint32_t, 2> next{kNone, kNone};
    };

    void push(std::uint32_t vertex, std::uint32_t end)
    {
        m_entries[end / 2].next[end % 2] = m_first[vertex];
        m_first[vertex] = end;
    }

    std::vector<std::uint32_t> m_first; ///< by vertex
    std::vector<Entry> m_entries;       ///< by edge
};

} // namespace host::geometry
