// The reflex corners of a polygon, found by place.
#pragma once

#include "host/geometry/mesh/PlanarRing.h"

#include <algorithm>
#include <array>

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

    /// Calls `visit(node)` for the nodes in the cells that a triangle meets, until it returns true;
    /// more nodes than those in the triangle are visited. Returns whether it did.
    template<class Visit>
    bool anyNear(const std::array<PlanePoint, 3>& triangle, const Visit& visit) const
    {
        const CellRange rows = rowsOf(triangle);
        for (std::uint32_t row = rows.first; row < rows.end; ++row) {
            const CellRange columns = columnsInRow(triangle, row);
            const std::uint32_t end = m_cellStart[row * m_columns + columns.end];
            for (std::uint32_t i = m_cellStart[row * m_columns + columns.first]; i < end; ++i) {
                if (visit(m_nodes[i])) {
                    return true;
                }
            }
        }
        return false;
    }

private:
    struct CellRange {
        std::uint32_t first = 0;
        std::uint32_t end = 0;
    };

    CellRange rowsOf(const std::array<PlanePoint, 3>& triangle) const;
    CellRange columnsInRow(const std::array<PlanePoint, 3>& triangle, std::uint32_t row) const;
    std::uint32_t columnOf(double x) const;
    std::uint32_t rowOf(double y) const;

    PlanePoint m_low; ///< with m_high, the box round the nodes
    PlanePoint m_high;
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
