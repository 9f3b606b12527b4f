#include "host/geometry/mesh/ReflexGrid.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace host::geometry {
namespace {

constexpr std::uint32_t kWorthAGrid = 32; ///< nodes; fewer are one cell
constexpr double kMaxSide = 65536;        ///< cells; fewer where there are few nodes

struct Extent {
    double low = std::numeric_limits<double>::max();
    double high = std::numeric_limits<double>::lowest();
    void add(double value)
    {
        low = std::min(low, value - 1); // a step more on each side covers the rounding
        high = std::max(high, value + 1);
    }
};

/// The extent along one axis of the part of a triangle that lies between two values on the other.
template<double PlanePoint::*Along, double PlanePoint::*Across>
Extent extentInBand(const std::array<PlanePoint, 3>& triangle, double bottom, double top)
{
    Extent extent;
    bottom -= 1;
    top += 1;
    for (std::size_t i = 0; i < 3; ++i) {
        const PlanePoint& a = triangle[i];
        const PlanePoint& b = triangle[(i + 1) % 3];
        if (a.*Across >= bottom && a.*Across <= top) {
            extent.add(a.*Along);
        }
        for (const double limit : {bottom, top}) {
            if ((a.*Across < limit) != (b.*Across < limit)) {
                const double share = (limit - a.*Across) / (b.*Across - a.*Across);
                extent.add(a.*Along + share * (b.*Along - a.*Along));
            }
        }
    }
    return extent;
}

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

ReflexGrid::CellRange ReflexGrid::rowsOf(const std::array<PlanePoint, 3>& triangle) const
{
    if (m_rows == 1 && m_columns == 1) {
        return {0, 1};
    }
    const Extent y = extentInBand<&PlanePoint::y, &PlanePoint::x>(triangle, m_low.x, m_high.x);
    if (y.low > m_high.y || y.high < m_low.y) {
        return {};
    }
    return {rowOf(y.low), rowOf(y.high) + 1};
}

ReflexGrid::CellRange ReflexGrid::columnsInRow(const std::array<PlanePoint, 3>& triangle,
                                               std::uint32_t row) const
{
    if (m_columns == 1) {
        return {0, 1};
    }
    const Extent x = extentInBand<&PlanePoint::x, &PlanePoint::y>(
        triangle, m_low.y + row / m_perCell, m_low.y + (row + 1) / m_perCell);
    if (x.low > m_high.x || x.high < m_low.x) {
        return {};
    }
    return {columnOf(x.low), columnOf(x.high) + 1};
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
    std::uint32_t node = start;
    do {
        if (ring.turnAt(node) <= 0) {
            const PlanePoint& place = ring[node].place;
            const bool isFirst = m_scratch.empty();
            m_low = isFirst ? place
                            : PlanePoint{std::min(m_low.x, place.x), std::min(m_low.y, place.y)};
            m_high = isFirst ? place
                             : PlanePoint{std::max(m_high.x, place.x), std::max(m_high.y, place.y)};
            m_isReflex[node] = true;
            m_scratch.push_back(node);
        }
        node = ring[node].next;
    } while (node != start);
    m_built = m_count = static_cast<std::uint32_t>(m_scratch.size());

    // Square cells, about as many as nodes.
    const double width = std::max(m_high.x - m_low.x, 1.0);
    const double height = std::max(m_high.y - m_low.y, 1.0);
    const double maxSide = std::min(kMaxSide, 2.0 * m_built);
    m_perCell = m_built < kWorthAGrid ? 0
                                      : std::min(std::sqrt(m_built / width / height),
                                                 maxSide / std::max(width, height));
    m_columns = static_cast<std::uint32_t>(width * m_perCell) + 1;
    m_rows = static_cast<std::uint32_t>(height * m_perCell) + 1;
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
