// Edges by the pair of their ends.
#pragma once

#include "host/geometry/mesh/edit/MeshLinks.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace host::geometry {

/// Each vertex has a list of its edges; two lists are searched side by side, so that an edge costs
/// no more than the shorter of them. Memory stays in the order in which edges come, which is mostly
/// that of the vertices.
class EdgeTable {
public:
    /// For vertices below the count.
    explicit EdgeTable(std::size_t vertexCount) : m_first(vertexCount, kNone) {}

    void reserve(std::size_t edges) { m_entries.reserve(2 * edges); }
    /// The edge between two vertices, either way; kNone where there is none.
    std::uint32_t find(std::uint32_t a, std::uint32_t b) const
    {
        std::uint32_t atA = m_first[a];
        std::uint32_t atB = m_first[b];
        while (atA != kNone && atB != kNone) {
            if (m_entries[atA].other == b) {
                return m_entries[atA].edge;
            }
            if (m_entries[atB].other == a) {
                return m_entries[atB].edge;
            }
            atA = m_entries[atA].next;
            atB = m_entries[atB].next;
        }
        return kNone;
    }
    /// For a pair that has none yet.
    void add(std::uint32_t a, std::uint32_t b, std::uint32_t edge)
    {
        push(a, b, edge);
        push(b, a, edge);
    }

private:
    struct Entry {
        std::uint32_t other = 0;
        std::uint32_t edge = 0;
        std::uint32_t next = kNone;
    };

    void push(std::uint32_t at, std::uint32_t other, std::uint32_t edge)
    {
        m_entries.push_back({other, edge, m_first[at]});
        m_first[at] = static_cast<std::uint32_t>(m_entries.size() - 1);
    }

    std::vector<std::uint32_t> m_first; ///< by vertex
    std::vector<Entry> m_entries;
};

} // namespace host::geometry
