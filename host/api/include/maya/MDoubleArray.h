// An array of doubles.
#pragma once

#include <maya/detail/ArrayOf.h>

class MDoubleArray : public host::api::ArrayOf<double, MDoubleArray> {
public:
    MDoubleArray() = default;
    explicit MDoubleArray(unsigned int initialSize, double initialValue = 0)
        : ArrayOf(initialSize, initialValue)
    {
    }
};
