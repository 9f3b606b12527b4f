// An array of texts.
#pragma once

#include <maya/MString.h>
#include <maya/detail/ArrayOf.h>

class MStringArray : public host::api::ArrayOf<MString, MStringArray> {
public:
    MStringArray() = default;
    explicit MStringArray(unsigned int initialSize, const MString& initialValue = MString())
        : ArrayOf(initialSize, initialValue)
    {
    }

    using ArrayOf::operator[];
    /// By value, unlike the other arrays.
    MString operator[](unsigned int index) const { return m_elements[index]; }
};
