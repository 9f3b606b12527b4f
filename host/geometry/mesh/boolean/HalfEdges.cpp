#include "host/geometry/mesh/boolean/HalfEdges.h"

#include "host/geometry/mesh/edit/MeshLinks.h"

#include <algorithm>
#include <tuple>

namespace host::geometry {

HalfEdges::HalfEdges(std::span<const SolidTriangle> triangles)
    : m_triangles(triangles), m_beyond(3 * triangles.size(), kNone)
{
    struct Side {
        std::uint32_t low = 0;
        std::uint32_t high = 0;
        std::uint32_t side = 0;
    };
    std::vector<Side> sides;
    sides.reserve(m_beyond.size());
    for (std::uint32_t side = 0; side < count(); ++side) {
        const auto [low, high] = std::minmax({start(side), end(side)});
        sides.push_back({low, high, side});
    }
    std::sort(sides.begin(), sides.end(), [](const Side& a, const Side& b) {
        return std::tie(a.low, a.high, a.side) < std::tie(b.low, b.high, b.side);
    });
    const auto isSame = [](const Side& a, const Side& b) {
        return a.low == b.low && a.high == b.high;
    };
    m_isClosed = sides.size() % 2 == 0;
    for (std::size_t i = 0; m_isClosed && i < sides.size(); i += 2) {
        const Side& one = sides[i];
        const Side& other = sides[i + 1];
        m_isClosed = isSame(one, other) && start(one.side) == end(other.side) &&
                     (i + 2 == sides.size() || !isSame(one, sides[i + 2]));
        m_beyond[one.side] = other.side;
        m_beyond[other.side] = one.side;
    }
}

} // namespace host::geometry
