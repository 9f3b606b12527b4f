#include <maya/MTrimBoundaryArray.h>

#include <exception>

bool MTrimBoundaryArray::append(const MObjectArray& boundary)
{
    try {
        m_boundaries.push_back(boundary);
        return true;
    } catch (const std::exception&) {
        return false;
    }
}
