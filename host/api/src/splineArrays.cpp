#include "host/api/src/splineArrays.h"

namespace host::api {

MStatus fill(MDoubleArray& array, const std::vector<double>& numbers)
{
    MStatus status = array.setLength(static_cast<unsigned int>(numbers.size()));
    for (unsigned int i = 0; status && i < numbers.size(); ++i) {
        array[i] = numbers[i];
    }
    return status;
}

MStatus fill(MPointArray& array, const std::vector<double>& poles, std::size_t dimension,
             bool isRational, const MMatrix& matrix)
{
    const std::size_t stride = dimension + (isRational ? 1 : 0);
    const auto count = static_cast<unsigned int>(poles.size() / stride);
    MStatus status = array.setLength(count);
    for (unsigned int i = 0; status && i < count; ++i) {
        const double* pole = poles.data() + i * stride;
        const MPoint point(pole[0], pole[1], dimension > 2 ? pole[2] : 0);
        array[i] = point * matrix;
        array[i].w = isRational ? pole[dimension] : 1;
    }
    return status;
}

} // namespace host::api
