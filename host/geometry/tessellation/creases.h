// Lines along which a surface is bent sharply.
#pragma once

#include "host/geometry/tessellation/GridLines.h"

namespace host::geometry {

/// The lines with those twice at which the knots allow a crease and the normals of both sides
/// differ by more than a degree somewhere. The first of two equal lines belongs to the side before
/// it. Unchanged where that would make more than `maxCells` cells.
GridLines withCreases(const SurfaceSheet& sheet, const GridLines& lines, std::size_t maxCells);

/// The parameters at which to ask for normals: those of the lines, moved a little to their side
/// where they are twice.
std::vector<double> normalParameters(std::span<const double> lines);

} // namespace host::geometry
