// What the API's arrays have in common.
#pragma once

#include <maya/MStatus.h>

#include <exception>
#include <utility>
#include <vector>

namespace host::api {

/// The failing statuses of arrays: an index outside, memory that is not there.
MStatus indexOutside();
MStatus outOfMemory();

/// An array of T; `Self` is the class that offers it. Index operators check nothing, every other
/// function does.
template<class T, class Self>
class ArrayOf {
public:
    ArrayOf() = default;

    unsigned int length() const { return static_cast<unsigned int>(m_elements.size()); }
    T& operator[](unsigned int index) { return m_elements[index]; }
    const T& operator[](unsigned int index) const { return m_elements[index]; }

    MStatus append(const T& element)
    {
        return guarded([&] { m_elements.push_back(element); });
    }
    MStatus set(const T& element, unsigned int index)
    {
        if (index >= m_elements.size()) {
            return indexOutside();
        }
        return guarded([&] { m_elements[index] = element; });
    }
    /// Before the element `index`; at the end when `index` is the length.
    MStatus insert(const T& element, unsigned int index)
    {
        if (index > m_elements.size()) {
            return indexOutside();
        }
        return guarded([&] { m_elements.insert(m_elements.begin() + index, T(element)); });
    }
    MStatus remove(unsigned int index)
    {
        if (index >= m_elements.size()) {
            return indexOutside();
        }
        m_elements.erase(m_elements.begin() + index);
        return MStatus();
    }
    MStatus clear()
    {
        m_elements.clear();
        return MStatus();
    }
    MStatus setLength(unsigned int length)
    {
        return guarded([&] { m_elements.resize(length); });
    }
    MStatus copy(const Self& source)
    {
        return guarded([&] { m_elements = static_cast<const ArrayOf&>(source).m_elements; });
    }
    void setSizeIncrement(unsigned int increment) { m_sizeIncrement = increment; }
    unsigned int sizeIncrement() const { return m_sizeIncrement; }

protected:
    /// An array without the elements when memory is short.
    ArrayOf(unsigned int length, const T& value)
    {
        guarded([&] { m_elements.assign(length, value); });
    }
    template<class Action>
    static MStatus guarded(Action&& action)
    {
        try {
            std::forward<Action>(action)();
            return MStatus();
        } catch (const std::exception&) {
            return outOfMemory();
        }
    }

    std::vector<T> m_elements;

private:
    unsigned int m_sizeIncrement = 0; // a hint that is kept and not needed
};

} // namespace host::api
