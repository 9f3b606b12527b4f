#include "host/geometry/tessellation/creases.h"

#include <algorithm>

namespace host::geometry {
namespace {

constexpr double kBeside = 1e-6;           ///< of the distance to the line before
constexpr double kSameDirection = 0.99985; ///< cosine of a degree
constexpr std::size_t kLooks = 9;          ///< places along a line that are compared

bool isCrease(const SurfaceSheet& sheet, bool isU, double before, double line,
              std::span<const double> across)
{
    const std::array<double, 2> sides{line - kBeside * (line - before), line};
    std::vector<SurfacePoint> points(2 * across.size());
    const std::size_t step = isU ? across.size() : 1;
    if (isU) {
        sheet.evaluator().evaluateGrid(sides, across, points);
    } else {
        sheet.evaluator().evaluateGrid(across, sides, points);
    }
    for (std::size_t i = 0; i < across.size(); ++i) {
        const std::size_t first = isU ? i : 2 * i;
        if (dot(points[first].normal, points[first + step].normal) < kSameDirection) {
            return true;
        }
    }
    return false;
}

/// Whether a knot occurs as often as the degree. By halving: there may be as many lines as knots.
bool mayCrease(const KnotVector& knots, double line)
{
    const auto [first, last] = std::equal_range(knots.knots().begin(), knots.knots().end(), line);
    return last - first >= knots.degree();
}

std::vector<double> doubled(const SurfaceSheet& sheet, bool isU, const GridLines& lines)
{
    const KnotVector& knots = isU ? sheet.evaluator().knotsU() : sheet.evaluator().knotsV();
    const std::vector<double>& own = isU ? lines.us : lines.vs;
    // Middles of cells: creases of the other direction do not disturb there.
    const std::vector<double>& others = isU ? lines.vs : lines.us;
    std::vector<double> across;
    for (std::size_t i = 1; i < others.size(); ++i) {
        across.push_back(0.5 * (others[i - 1] + others[i]));
    }
    across = thinned(across, kLooks);
    std::vector<double> result{own.front()};
    for (std::size_t i = 1; i < own.size(); ++i) {
        const bool isInside = i + 1 < own.size();
        if (isInside && mayCrease(knots, own[i]) &&
            isCrease(sheet, isU, own[i - 1], own[i], across)) {
            result.push_back(own[i]);
        }
        result.push_back(own[i]);
    }
    return result;
}

} // namespace

GridLines withCreases(const SurfaceSheet& sheet, const GridLines& lines, std::size_t maxCells)
{
    GridLines result{doubled(sheet, true, lines), doubled(sheet, false, lines), lines.isCoarsened};
    return result.cellCount() <= maxCells ? result : lines;
}

std::vector<double> normalParameters(std::span<const double> lines)
{
    std::vector<double> result(lines.begin(), lines.end());
    for (std::size_t i = 1; i + 1 < lines.size(); ++i) {
        if (lines[i] == lines[i + 1]) {
            result[i] = lines[i] - kBeside * (lines[i] - lines[i - 1]);
        }
    }
    return result;
}

} // namespace host::geometry
