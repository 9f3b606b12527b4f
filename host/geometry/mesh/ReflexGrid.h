// The reflex corners of a polygon, found by place.
#pragma once

#include "host/geometry/mesh/PlanarRing.h"

namespace host::geometry {

/// Holds the nodes of a ring at which it does not turn left: only these can be in the way of an
/// ear.
class ReflexGrid {
public:
    /// Takes in the reflex nodes of the ring that `start` is in.
    void build(const PlanarRing& ring, std::uint32_t start);

    /// To be told of nodes that were cut off, and of those that turn left by now.
    void remove(std::uint32_t node);
    bool has(std::uint32_t node) const { return m_isReflex[node]; }
    /// Most of what the cells hold is gone: time to build again.
    bool isSparse() const { return m_count < m_built / 2; }

    /// Calls `visit(node)` for the nodes in the cells that a box meets, until it returns true; more
    /// nodes than those in the box are visited. Returns whether it did.
    template<class Visit>
    bool anyIn(const PlanePoint& low, const PlanePoint& high, const Visit& visit) const
    {
        const std::uint32_t lastRow = rowOf(high.y);
        const std::uint32_t lastColumn = columnOf(high.x);
        for (std::uint32_t row = rowOf(low.y); row <= lastRow; ++row) {
            const std::uint32_t first = m_cellStart[row * m_columns + columnOf(low.x)];
            const std::uint32_t end = m_cellStart[row * m_columns + lastColumn + 1];
            for (std::uint32_t i = first; i < end; ++i) {
                if (visit(m_nodes[i])) {
                    return true;
                }
            }
        }
        return false;
    }

private:
    std::uint32_t columnOf(double x) const;
    std::uint32_t rowOf(double y) const;

    PlanePoint m_low;
    double m_perCell = 0; ///< cells per step of the plane
    std::uint32_t m_columns = 1;
    std::uint32_t m_rows = 1;
    std::vector<std::uint32_t> m_cellStart;
    std::vector<std::uint32_t> m_nodes; ///< cell after cell, row after row
    std::vector<std::uint32_t> m_scratch;
    std::vector<bool> m_isReflex;
    std::uint32_t m_built = 0;
    std::uint32_t m_count = 0;
};

} // namespace host::geometry
