// The lines along which a surface is cut.
#pragma once

#include "host/geometry/tessellation/SurfaceSheet.h"
#include "host/geometry/tessellation/TessellationSettings.h"

#include <vector>

namespace host::geometry {

struct GridLines {
    std::vector<double> us, vs; ///< ascending, with both ends of the domain
    bool isCoarsened = false;   ///< there would have been more than the settings' triangles

    std::size_t cellCount() const { return (us.size() - 1) * (vs.size() - 1); }
};

/// Chooses the lines of both directions.
///
/// Each span is measured at quarters of it along several lines: how far the surface turns at
/// each, and its second difference across the chord, |S''| h^2, from which n segments depart by
/// |S''| (span / n)^2 / 8. Quads are bent by |Suv| du dv / 4 more.
///
/// Approximation: what happens between the lines measured is not seen.
GridLines chooseGridLines(const SurfaceSheet& sheet, const TessellationSettings& settings);

} // namespace host::geometry
