// An array of DAG paths.
#pragma once

#include <maya/MDagPath.h>
#include <maya/detail/ArrayOf.h>

class MDagPathArray : public host::api::ArrayOf<MDagPath, MDagPathArray> {
public:
    MDagPathArray() = default;
    explicit MDagPathArray(unsigned int initialSize, const MDagPath& initialValue = MDagPath())
        : ArrayOf(initialSize, initialValue)
    {
    }
};
