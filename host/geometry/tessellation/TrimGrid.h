// The part of a grid that lies inside a trim region, away from its boundaries.
#pragma once

#include "host/geometry/tessellation/trimLoops.h"

namespace host::geometry {

/// Lines of the grid round a region, its nodes and its cells. Node (i, k) is at (u(i), v(k)), cell
/// (i, k) between it and node (i + 1, k + 1).
class TrimGrid {
public:
    /// Nodes and crossings of boundaries with the grid's rows of one region.
    static constexpr std::size_t kMaxNodes = std::size_t{1} << 23;
    static constexpr std::size_t kMaxRowCrossings = std::size_t{1} << 23;
    /// Of a cell, free on every side between a boundary and what is chosen.
    static constexpr double kMargin = 0.25;

    TrimGrid(const GridLines& lines, std::span<const BoundaryLoop> loops);

    std::size_t columns() const { return m_us.size(); } ///< of nodes; 0: no part of the grid
    std::size_t rows() const { return m_vs.size(); }
    const std::vector<double>& us() const { return m_us; }
    const std::vector<double>& vs() const { return m_vs; }
    /// Inside the region, with a margin.
    bool isNode(std::size_t i, std::size_t k) const { return m_isNode[i * rows() + k] != 0; }
    /// All of the cell is.
    bool isCell(std::size_t i, std::size_t k) const
    {
        return i + 1 < columns() && k + 1 < rows() && m_isCell[i * rows() + k] != 0;
    }
    /// False beyond the limits: then there are no nodes.
    bool isComplete() const { return m_isComplete; }

private:
    void clip(const GridLines& lines, std::span<const BoundaryLoop> loops);
    bool findInside(std::span<const BoundaryLoop> loops);
    void leaveMargins(std::span<const BoundaryLoop> loops);

    std::vector<double> m_us, m_vs;
    std::vector<std::uint8_t> m_isNode;
    std::vector<std::uint8_t> m_isCell;
    bool m_isComplete = true;
};

} // namespace host::geometry
