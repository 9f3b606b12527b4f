#include "host/geometry/tessellation/TrimGrid.h"

#include <algorithm>
#include <cmath>

namespace host::geometry {
namespace {

/// Calls with both ends of every side of the loops.
template<class Action>
void eachSide(std::span<const BoundaryLoop> loops, Action action)
{
    for (const BoundaryLoop& loop : loops) {
        for (std::size_t i = 0; i < loop.points.size(); ++i) {
            action(loop.points[i], loop.points[i + 1 == loop.points.size() ? 0 : i + 1],
                   loop.isHole);
        }
    }
}

/// Lines from the last one before `low` to the first one behind `high`.
std::vector<double> linesAround(const std::vector<double>& lines, double low, double high)
{
    auto first = std::lower_bound(lines.begin(), lines.end(), low);
    auto last = std::upper_bound(lines.begin(), lines.end(), high);
    first = first != lines.begin() ? first - 1 : first;
    last = last != lines.end() ? last + 1 : last;
    return {first, last};
}

/// Ranges of one direction that may overlap their neighbours; both ends ascend.
struct Ranges {
    std::vector<double> low, high;

    static Ranges roundNodes(const std::vector<double>& lines)
    {
        Ranges ranges;
        for (std::size_t i = 0; i < lines.size(); ++i) {
            const double before = i > 0 ? lines[i] - lines[i - 1] : lines[1] - lines[0];
            const double after = i + 1 < lines.size() ? lines[i + 1] - lines[i] : before;
            const double margin = TrimGrid::kMargin * std::min(before, after);
            ranges.low.push_back(lines[i] - margin);
            ranges.high.push_back(lines[i] + margin);
        }
        return ranges;
    }
    static Ranges roundCells(const std::vector<double>& lines)
    {
        const Ranges nodes = roundNodes(lines);
        return {{nodes.low.begin(), nodes.low.end() - 1},
                {nodes.high.begin() + 1, nodes.high.end()}};
    }
    std::size_t first(double from) const
    {
        return static_cast<std::size_t>(std::lower_bound(high.begin(), high.end(), from) -
                                        high.begin());
    }
};

/// Clears the marks of all boxes of the ranges that a straight line meets; `stride` marks a column.
void clearAlong(const PlanePosition& a, const PlanePosition& b, const Ranges& u, const Ranges& v,
                std::size_t stride, std::vector<std::uint8_t>& marks)
{
    const double lowU = std::min(a.x, b.x), highU = std::max(a.x, b.x);
    const double lowV = std::min(a.y, b.y), highV = std::max(a.y, b.y);
    for (std::size_t i = u.first(lowU); i < u.low.size() && u.low[i] <= highU; ++i) {
        double from = lowV;
        double to = highV;
        if (u.low[i] > lowU || u.high[i] < highU) {
            const double perU = (b.y - a.y) / (b.x - a.x);
            const double atLow = a.y + perU * (std::max(u.low[i], lowU) - a.x);
            const double atHigh = a.y + perU * (std::min(u.high[i], highU) - a.x);
            from = std::max(lowV, std::min(atLow, atHigh));
            to = std::min(highV, std::max(atLow, atHigh));
        }
        for (std::size_t k = v.first(from); k < v.low.size() && v.low[k] <= to; ++k) {
            marks[i * stride + k] = 0;
        }
    }
}

struct RowCrossing {
    std::uint32_t row = 0;
    std::int32_t outer = 0, hole = 0;
    double u = 0;
};

} // namespace

TrimGrid::TrimGrid(const GridLines& lines, std::span<const BoundaryLoop> loops)
{
    clip(lines, loops);
    m_isComplete = columns() * rows() <= kMaxNodes && findInside(loops);
    if (!m_isComplete) {
        m_us.clear();
        m_vs.clear();
    } else if (columns() > 1 && rows() > 1) {
        leaveMargins(loops);
    }
}

void TrimGrid::clip(const GridLines& lines, std::span<const BoundaryLoop> loops)
{
    PlanePosition low{lines.us.back(), lines.vs.back()};
    PlanePosition high{lines.us.front(), lines.vs.front()};
    eachSide(loops, [&](const PlanePosition& a, const PlanePosition&, bool) {
        low = {std::min(low.x, a.x), std::min(low.y, a.y)};
        high = {std::max(high.x, a.x), std::max(high.y, a.y)};
    });
    m_us = linesAround(lines.us, low.x, high.x);
    m_vs = linesAround(lines.vs, low.y, high.y);
}

/// Follows each row of nodes across the sides of the loops. Behind a side that goes down there is
/// one turn more.
bool TrimGrid::findInside(std::span<const BoundaryLoop> loops)
{
    std::vector<RowCrossing> crossings;
    bool isTooMuch = false;
    eachSide(loops, [&](const PlanePosition& a, const PlanePosition& b, bool isHole) {
        const auto firstRow = std::lower_bound(m_vs.begin(), m_vs.end(), std::min(a.y, b.y));
        const auto lastRow = std::lower_bound(firstRow, m_vs.end(), std::max(a.y, b.y));
        isTooMuch = isTooMuch || crossings.size() + static_cast<std::size_t>(lastRow - firstRow) >
                                     kMaxRowCrossings;
        const std::int32_t turn = b.y < a.y ? 1 : -1;
        for (auto row = firstRow; row < lastRow && !isTooMuch; ++row) {
            crossings.push_back({static_cast<std::uint32_t>(row - m_vs.begin()), isHole ? 0 : turn,
                                 isHole ? turn : 0,
                                 a.x + (*row - a.y) / (b.y - a.y) * (b.x - a.x)});
        }
    });
    if (isTooMuch) {
        return false;
    }
    std::sort(crossings.begin(), crossings.end(), [](const RowCrossing& a, const RowCrossing& b) {
        return a.row != b.row ? a.row < b.row : a.u < b.u;
    });
    m_isNode.assign(columns() * rows(), 0);
    std::size_t next = 0;
    for (std::size_t k = 0; k < rows(); ++k) {
        std::int32_t outer = 0;
        std::int32_t hole = 0;
        for (std::size_t i = 0; i < columns(); ++i) {
            for (;
                 next < crossings.size() && crossings[next].row == k && crossings[next].u < m_us[i];
                 ++next) {
                outer += crossings[next].outer;
                hole += crossings[next].hole;
            }
            m_isNode[i * rows() + k] = outer != 0 && hole == 0 ? 1 : 0;
        }
        while (next < crossings.size() && crossings[next].row == k) {
            ++next;
        }
    }
    return true;
}

void TrimGrid::leaveMargins(std::span<const BoundaryLoop> loops)
{
    const Ranges nodesU = Ranges::roundNodes(m_us), nodesV = Ranges::roundNodes(m_vs);
    const Ranges cellsU = Ranges::roundCells(m_us), cellsV = Ranges::roundCells(m_vs);
    m_isCell.assign(columns() * rows(), 1);
    eachSide(loops, [&](const PlanePosition& a, const PlanePosition& b, bool) {
        clearAlong(a, b, nodesU, nodesV, rows(), m_isNode);
        clearAlong(a, b, cellsU, cellsV, rows(), m_isCell);
    });
    for (std::size_t i = 0; i + 1 < columns(); ++i) {
        for (std::size_t k = 0; k + 1 < rows(); ++k) {
            const bool isInside =
                isNode(i, k) && isNode(i + 1, k) && isNode(i, k + 1) && isNode(i + 1, k + 1);
            m_isCell[i * rows() + k] = isInside ? m_isCell[i * rows() + k] : 0;
        }
    }
}

} // namespace host::geometry
