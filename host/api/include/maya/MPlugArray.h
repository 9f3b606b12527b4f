// An array of plugs.
#pragma once

#include <maya/MPlug.h>
#include <maya/detail/ArrayOf.h>

class MPlugArray : public host::api::ArrayOf<MPlug, MPlugArray> {
public:
    MPlugArray() = default;
    explicit MPlugArray(unsigned int initialSize, const MPlug& initialValue = MPlug())
        : ArrayOf(initialSize, initialValue)
    {
    }
};
