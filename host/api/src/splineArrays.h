// The numbers of curves and surfaces as the API's arrays.
#pragma once

#include <maya/MDoubleArray.h>
#include <maya/MMatrix.h>
#include <maya/MPointArray.h>

#include <cstddef>
#include <vector>

namespace host::api {

/// Replaces the array's elements.
MStatus fill(MDoubleArray& array, const std::vector<double>& numbers);
/// Replaces the array's elements by control points of `dimension` coordinates each, and a weight
/// after them when rational, as seen through a matrix.
MStatus fill(MPointArray& array, const std::vector<double>& poles, std::size_t dimension,
             bool isRational, const MMatrix& matrix);

} // namespace host::api
