// An array of points.
#pragma once

#include <maya/MPoint.h>
#include <maya/detail/ArrayOf.h>

class MPointArray : public host::api::ArrayOf<MPoint, MPointArray> {
public:
    MPointArray() = default;
    explicit MPointArray(unsigned int initialSize, const MPoint& initialValue = MPoint())
        : ArrayOf(initialSize, initialValue)
    {
    }

    using ArrayOf::append;
    MStatus append(double x, double y, double z, double w = 1)
    {
        return append(MPoint(x, y, z, w));
    }
};
