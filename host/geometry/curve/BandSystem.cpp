#include "host/geometry/curve/BandSystem.h"

#include <algorithm>
#include <cmath>

namespace host::geometry {

BandSystem::BandSystem(std::size_t size, std::size_t reach)
    : m_size(size), m_reach(reach), m_numbers(size * (2 * reach + 1))
{
}

bool BandSystem::solve(std::vector<HomogeneousPoint>& sides, std::size_t width)
{
    constexpr double kLeastPivot = 1e-13;
    for (std::size_t row = 0; row < m_size; ++row) {
        if (!(std::fabs(at(row, row)) > kLeastPivot)) {
            return false;
        }
        const std::size_t end = std::min(m_size, row + m_reach + 1);
        for (std::size_t below = row + 1; below < end; ++below) {
            const double factor = at(below, row) / at(row, row);
            if (factor == 0) {
                continue;
            }
            for (std::size_t column = row; column < end; ++column) {
                at(below, column) -= factor * at(row, column);
            }
            for (std::size_t j = 0; j < width; ++j) {
                sides[below * width + j].add(sides[row * width + j], -factor);
            }
        }
    }
    for (std::size_t row = m_size; row-- > 0;) {
        const std::size_t end = std::min(m_size, row + m_reach + 1);
        for (std::size_t j = 0; j < width; ++j) {
            HomogeneousPoint sum = sides[row * width + j];
            for (std::size_t column = row + 1; column < end; ++column) {
                sum.add(sides[column * width + j], -at(row, column));
            }
            HomogeneousPoint& solved = sides[row * width + j];
            solved = {};
            solved.add(sum, 1 / at(row, row));
        }
    }
    return true;
}

} // namespace host::geometry
