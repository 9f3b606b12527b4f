// An array of vectors.
#pragma once

#include <maya/MVector.h>
#include <maya/detail/ArrayOf.h>

class MVectorArray : public host::api::ArrayOf<MVector, MVectorArray> {
public:
    MVectorArray() = default;
    explicit MVectorArray(unsigned int initialSize, const MVector& initialValue = MVector())
        : ArrayOf(initialSize, initialValue)
    {
    }
};
