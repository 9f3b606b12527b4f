// Who touches whom in a mesh: made once for an operation, in one pass each.
#pragma once

#include "host/geometry/mesh/MeshData.h"

#include <cstdint>
#include <span>
#include <vector>

namespace host::geometry {

/// No corner, face or edge.
inline constexpr std::uint32_t kNone = 0xffffffff;

/// Corners and faces by each other.
class CornerLinks {
public:
    explicit CornerLinks(const MeshTopology& topology);

    std::uint32_t face(std::uint32_t corner) const
    {
        return m_faceOfLoop.empty() ? m_loop[corner] : m_faceOfLoop[m_loop[corner]];
    }
    /// The next and the last corner of the same loop.
    std::uint32_t next(std::uint32_t corner) const
    {
        const std::uint32_t loop = m_loop[corner];
        return corner + 1 < m_loopStart[loop + 1] ? corner + 1 : m_loopStart[loop];
    }
    std::uint32_t previous(std::uint32_t corner) const
    {
        const std::uint32_t loop = m_loop[corner];
        return (corner > m_loopStart[loop] ? corner : m_loopStart[loop + 1]) - 1;
    }

private:
    std::vector<std::uint32_t> m_loop; ///< by corner
    std::vector<std::uint32_t> m_loopStart;
    std::vector<std::uint32_t> m_faceOfLoop; ///< empty where faces are loops
};

/// Lists of numbers, one for each owner, ascending.
class NumberLists {
public:
    NumberLists() = default;
    /// `owners[i]` owns number i; owners from 0 to ownerCount - 1, others own nothing.
    NumberLists(std::span<const std::uint32_t> owners, std::uint32_t ownerCount)
        : NumberLists(static_cast<std::uint32_t>(owners.size()), ownerCount,
                      [owners](std::uint32_t number) { return owners[number]; })
    {
    }
    /// `ownerOf(i)` owns number i, from 0 to count - 1; it is asked twice.
    template<class OwnerOf>
    NumberLists(std::uint32_t count, std::uint32_t ownerCount, const OwnerOf& ownerOf)
        : m_start(std::size_t{ownerCount} + 2)
    {
        for (std::uint32_t number = 0; number < count; ++number) {
            if (const std::uint32_t owner = ownerOf(number); owner < ownerCount) {
                ++m_start[owner + 2];
            }
        }
        // the start of each list stands one place further until it is filled
        for (std::uint32_t owner = 0; owner < ownerCount; ++owner) {
            m_start[owner + 2] += m_start[owner + 1];
        }
        m_numbers.resize(m_start.back());
        for (std::uint32_t number = 0; number < count; ++number) {
            if (const std::uint32_t owner = ownerOf(number); owner < ownerCount) {
                m_numbers[m_start[owner + 1]++] = number;
            }
        }
    }

    std::span<const std::uint32_t> of(std::uint32_t owner) const
    {
        return std::span(m_numbers).subspan(m_start[owner], m_start[owner + 1] - m_start[owner]);
    }
    /// Each number becomes its half: places 2n and 2n + 1 belong to n.
    void halve()
    {
        for (std::uint32_t& number : m_numbers) {
            number /= 2;
        }
    }

private:
    std::vector<std::uint32_t> m_start; ///< by owner, and the end; one more entry is unused
    std::vector<std::uint32_t> m_numbers;
};

/// The corners that leave along each edge, either way: none of a loose edge, one of a border, two
/// inside, more where the mesh is no manifold.
NumberLists cornersOfEdges(const MeshTopology& topology);
/// The corners that stand at each vertex.
NumberLists cornersOfVertices(const MeshTopology& topology);
/// The edges that end at each vertex, ascending.
NumberLists edgesOfVertices(const MeshTopology& topology);

/// The edge of a reference.
constexpr std::uint32_t edgeOf(std::int32_t reference)
{
    return static_cast<std::uint32_t>(reference >= 0 ? reference : -(reference + 1));
}
/// The same edge the other way.
constexpr std::int32_t reversed(std::int32_t reference)
{
    return -(reference + 1);
}
/// The reference that walks an edge from start to end, or back.
constexpr std::int32_t referenceTo(std::uint32_t edge, bool isBackwards)
{
    const auto forward = static_cast<std::int32_t>(edge);
    return isBackwards ? reversed(forward) : forward;
}

} // namespace host::geometry
