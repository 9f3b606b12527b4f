// Strands as renderers take them: lines with a width and a colour at every point.
#pragma once

#include "host/math/Vec.h"

#include <vector>

namespace host::geometry {

/// One line from root to tip; the three arrays are of one length.
struct RenderLine {
    std::vector<Vec3d> points; ///< centimetres
    std::vector<double> widths;
    std::vector<Vec3d> colors; ///< red, green, blue
};

/// The lines of a Paint Effects shape in its object space.
struct RenderLines {
    std::vector<RenderLine> main;
    std::vector<RenderLine> leaves;
    std::vector<RenderLine> flowers;
};

} // namespace host::geometry
