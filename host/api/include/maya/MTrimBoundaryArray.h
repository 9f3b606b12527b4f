// The boundaries of a trimmed region: each is the list of its edges.
#pragma once

#include <maya/MObjectArray.h>

#include <vector>

class MTrimBoundaryArray {
public:
    MTrimBoundaryArray() = default;

    unsigned int length() const { return static_cast<unsigned int>(m_boundaries.size()); }
    unsigned int size() const { return length(); }
    /// No check.
    const MObjectArray operator[](unsigned int index) const { return m_boundaries[index]; }
    MObjectArray get(unsigned int index) const { return m_boundaries[index]; }
    /// False when memory is short.
    bool append(const MObjectArray& boundary);
    void clear() { m_boundaries.clear(); }

private:
    std::vector<MObjectArray> m_boundaries;
};
