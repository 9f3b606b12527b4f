#include "scene/extendKnots.h"

namespace orv {

void extendKnots(std::vector<double>& knots, std::size_t position)
{
    if (position >= knots.size()) {
        return;
    }
    const std::size_t count = knots.size() - position;
    const double last = knots.back();
    const double appended = count >= 2 ? 2 * last - knots[knots.size() - 2] : last;
    if (count >= 3) {
        knots[position] = 2 * knots[position + 1] - knots[position + 2];
    }
    knots.push_back(appended);
}

} // namespace orv
