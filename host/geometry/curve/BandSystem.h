// Linear equations whose matrix is zero away from its diagonal, as interpolation by splines makes
// them.
#pragma once

#include "host/geometry/curve/HomogeneousPoint.h"

#include <cstddef>
#include <vector>

namespace host::geometry {

class BandSystem {
public:
    /// `size` equations; coefficients up to `reach` beside the diagonal.
    BandSystem(std::size_t size, std::size_t reach);

    /// A coefficient; `column` within the reach of `row`.
    double& at(std::size_t row, std::size_t column)
    {
        return m_numbers[row * (2 * m_reach + 1) + column + m_reach - row];
    }
    /// True when a coefficient of that place can be stored.
    bool reaches(std::size_t row, std::size_t column) const
    {
        return column + m_reach >= row && column <= row + m_reach;
    }
    /// Solves for `width` right sides at once, row by row in `sides`, which becomes the solution.
    /// Elimination without exchange of rows, which B-splines do not need; false when a pivot
    /// vanishes. The system is used up.
    bool solve(std::vector<HomogeneousPoint>& sides, std::size_t width);

private:
    std::size_t m_size;
    std::size_t m_reach;
    std::vector<double> m_numbers;
};

} // namespace host::geometry
