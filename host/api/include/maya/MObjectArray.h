// An array of objects.
#pragma once

#include <maya/MObject.h>
#include <maya/detail/ArrayOf.h>

class MObjectArray : public host::api::ArrayOf<MObject, MObjectArray> {
public:
    MObjectArray() = default;
    explicit MObjectArray(unsigned int initialSize, const MObject& initialValue = MObject())
        : ArrayOf(initialSize, initialValue)
    {
    }
};
