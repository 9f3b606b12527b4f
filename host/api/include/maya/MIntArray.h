// An array of integers.
#pragma once

#include <maya/detail/ArrayOf.h>

class MIntArray : public host::api::ArrayOf<int, MIntArray> {
public:
    MIntArray() = default;
    explicit MIntArray(unsigned int initialSize, int initialValue = 0)
        : ArrayOf(initialSize, initialValue)
    {
    }
};
