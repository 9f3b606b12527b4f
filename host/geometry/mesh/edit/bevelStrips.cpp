#include "host/geometry/mesh/edit/bevelStrips.h"

#include "host/geometry/mesh/edit/MeshLinks.h"

#include <algorithm>
#include <array>

namespace host::geometry {
namespace {

class StripOrder {
public:
    StripOrder(const MeshTopology& topology, std::span<const std::uint32_t> edges)
        : m_topology(topology)
        , m_edges(edges)
        , m_ends(topology.vertexCount)
        , m_isTaken(topology.edges.size())
    {
        for (const std::uint32_t edge : edges) {
            for (const std::uint32_t vertex :
                 {topology.edges[edge].start, topology.edges[edge].end}) {
                Ends& ends = m_ends[vertex];
                if (ends.count < 2) {
                    ends.edges[ends.count] = edge;
                }
                ends.count = std::min(ends.count + 1, 3U);
            }
        }
    }

    std::vector<BevelStrip> run()
    {
        std::vector<BevelStrip> strips;
        strips.reserve(m_edges.size());
        for (const std::uint32_t edge : m_edges) {
            if (!m_isTaken[edge]) {
                takeChain(edge);
                strips.insert(strips.end(), m_chain.begin(), m_chain.end());
            }
        }
        return strips;
    }

private:
    /// The first two edges at a vertex.
    struct Ends {
        std::array<std::uint32_t, 2> edges{};
        std::uint32_t count = 0;
    };

    std::uint32_t startOf(const BevelStrip& strip) const
    {
        const MeshEdge& ends = m_topology.edges[strip.edge];
        return strip.isBackwards ? ends.end : ends.start;
    }

    /// The strip that goes on where one ends, or that leads to where it starts. False where none
    /// does that is not taken.
    bool next(const BevelStrip& strip, bool isAhead, BevelStrip& found)
    {
        const MeshEdge& ends = m_topology.edges[strip.edge];
        const std::uint32_t vertex = isAhead != strip.isBackwards ? ends.end : ends.start;
        const Ends& here = m_ends[vertex];
        const std::uint32_t edge = here.edges[here.edges[0] == strip.edge ? 1 : 0];
        if (here.count != 2 || m_isTaken[edge]) {
            return false;
        }
        m_isTaken[edge] = true;
        found = {edge, (m_topology.edges[edge].start == vertex) != isAhead};
        return true;
    }

    void takeChain(std::uint32_t edge)
    {
        m_isTaken[edge] = true;
        m_chain.assign(1, {edge, false});
        BevelStrip strip;
        while (next(m_chain.back(), true, strip)) {
            m_chain.push_back(strip);
        }
        const auto ahead = static_cast<std::ptrdiff_t>(m_chain.size());
        strip = m_chain.front();
        while (next(strip, false, strip)) {
            m_chain.push_back(strip);
        }
        std::reverse(m_chain.begin() + ahead, m_chain.end());
        std::rotate(m_chain.begin(), m_chain.begin() + ahead, m_chain.end());
        const std::uint32_t first = startOf(m_chain.front());
        BevelStrip last = m_chain.back();
        last.isBackwards = !last.isBackwards;
        if (m_chain.size() > 1 && startOf(last) == first && m_ends[first].count == 2) {
            turnRing();
        }
    }

    void turnRing()
    {
        const auto lowest = std::min_element(
            m_chain.begin(), m_chain.end(),
            [this](const BevelStrip& a, const BevelStrip& b) { return startOf(a) < startOf(b); });
        std::rotate(m_chain.begin(), lowest, m_chain.end());
        if (m_chain.back().edge < m_chain.front().edge) {
            std::reverse(m_chain.begin(), m_chain.end());
            for (BevelStrip& strip : m_chain) {
                strip.isBackwards = !strip.isBackwards;
            }
        }
        std::rotate(m_chain.begin(), m_chain.end() - 1, m_chain.end());
    }

    const MeshTopology& m_topology;
    std::span<const std::uint32_t> m_edges;
    std::vector<Ends> m_ends; ///< by vertex
    std::vector<bool> m_isTaken;
    std::vector<BevelStrip> m_chain;
};

} // namespace

std::vector<BevelStrip> orderStrips(const MeshTopology& topology,
                                    std::span<const std::uint32_t> edges)
{
    return StripOrder(topology, edges).run();
}

} // namespace host::geometry
