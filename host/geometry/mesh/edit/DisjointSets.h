// Which numbers belong together.
#pragma once

#include <algorithm>
#include <cstdint>
#include <numeric>
#include <utility>
#include <vector>

namespace host::geometry {

/// Sets of numbers that only grow together; the lowest number of a set stands for it.
class DisjointSets {
public:
    explicit DisjointSets(std::size_t count) : m_parent(count)
    {
        std::iota(m_parent.begin(), m_parent.end(), 0U);
    }
    std::uint32_t lowest(std::uint32_t number)
    {
        while (m_parent[number] != number) {
            m_parent[number] = m_parent[m_parent[number]];
            number = m_parent[number];
        }
        return number;
    }
    void join(std::uint32_t a, std::uint32_t b)
    {
        a = lowest(a);
        b = lowest(b);
        m_parent[std::max(a, b)] = std::min(a, b);
    }

private:
    std::vector<std::uint32_t> m_parent;
};

} // namespace host::geometry
