#include "host/geometry/mesh/ReflexGrid.h"

#include <algorithm>
#include <cmath>

namespace host::geometry {
namespace {

constexpr std::uint32_t kWorthAGrid = 32; ///< nodes; fewer are one cell
constexpr double kMaxSide = 2048;         ///< cells

} // namespace

std::uint32_t ReflexGrid::columnOf(double x) const
{
    const double cell = (x - m_low.x) * m_perCell;
    return cell <= 0 ? 0 : std::min(static_cast<std::uint32_t>(cell), m_columns - 1);
}

std::uint32_t ReflexGrid::rowOf(double y) const
{
    const double cell = (y - m_low.y) * m_perCell;
    return cell <= 0 ? 0 : std::min(static_cast<std::uint32_t>(cell), m_rows - 1);
}

void ReflexGrid::remove(std::uint32_t node)
{
    if (m_isReflex[node]) {
        m_isReflex[node] = false;
        --m_count;
    }
}

void ReflexGrid::build(const PlanarRing& ring, std::uint32_t start)
{
    m_isReflex.assign(ring.nodes().size(), false);
    m_scratch.clear();
    PlanePoint high;
    std::uint32_t node = start;
    do {
        if (ring.turnAt(node) <= 0) {
            const PlanePoint& place = ring[node].place;
            const bool isFirst = m_scratch.empty();
            m_low = isFirst ? place
                            : PlanePoint{std::min(m_low.x, place.x), std::min(m_low.y, place.y)};
            high =
                isFirst ? place : PlanePoint{std::max(high.x, place.x), std::max(high.y, place.y)};
            m_isReflex[node] = true;
            m_scratch.push_back(node);
        }
        node = ring[node].next;
    } while (node != start);
    m_built = m_count = static_cast<std::uint32_t>(m_scratch.size());

    // Square cells, about as many as nodes.
    const double width = std::max(high.x - m_low.x, 1.0);
    const double height = std::max(high.y - m_low.y, 1.0);
    const double perCell = m_built < kWorthAGrid ? 0
                                                 : std::min(std::sqrt(m_built / width / height),
                                                            kMaxSide / std::max(width, height));
    m_perCell = perCell;
    m_columns = static_cast<std::uint32_t>(width * perCell) + 1;
    m_rows = static_cast<std::uint32_t>(height * perCell) + 1;
    m_cellStart.assign(std::size_t(m_columns) * m_rows + 1, 0);
    const auto cellOf = [&](std::uint32_t which) {
        const PlanePoint& place = ring[which].place;
        return rowOf(place.y) * m_columns + columnOf(place.x);
    };
    for (const std::uint32_t reflex : m_scratch) {
        ++m_cellStart[cellOf(reflex)];
    }
    std::uint32_t end = 0;
    for (std::uint32_t& cell : m_cellStart) {
        end += cell;
        cell = end;
    }
    m_nodes.resize(m_built);
    for (auto reflex = m_scratch.rbegin(); reflex != m_scratch.rend(); ++reflex) {
        m_nodes[--m_cellStart[cellOf(*reflex)]] = *reflex;
    }
}

} // namespace host::geometry
