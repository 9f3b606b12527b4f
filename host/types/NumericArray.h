// The elements of a numeric multi attribute (vertices, tweaks, keys, weights): sparse by runs,
// typed, one block of numbers.
#pragma once

#include "host/types/AttributeKind.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <variant>
#include <vector>

namespace host {

enum class NumberStorage : std::uint8_t { Float, Double, Int32 };

/// The storage of an attribute kind: single precision, double precision or whole numbers.
constexpr NumberStorage storageOf(AttributeKind kind)
{
    return isInteger(kind)           ? NumberStorage::Int32
           : isSinglePrecision(kind) ? NumberStorage::Float
                                     : NumberStorage::Double;
}

/// Elements of `width` numbers each, addressed by logical index. Memory is proportional to the
/// numbers given, never to an index.
class NumericArray {
public:
    struct Run {
        std::uint32_t first = 0;
        std::uint32_t count = 0;
        std::size_t offset = 0; ///< of its first number in the block
    };

    NumericArray(NumberStorage storage, std::size_t width);

    NumberStorage storage() const { return static_cast<NumberStorage>(m_numbers.index()); }
    std::size_t width() const { return m_width; }
    /// Runs in ascending order of `first`, not overlapping.
    const std::vector<Run>& runs() const { return m_runs; }
    std::size_t elementCount() const;
    bool empty() const { return m_runs.empty(); }
    /// One past the highest logical index; 0 when empty.
    std::uint64_t endIndex() const;

    /// Stores numbers.size() / width elements from logical index `first` on, over what was there.
    /// Appending after the last element is the fast way; T is the storage's type.
    template<class T>
    void store(std::uint32_t first, std::span<const T> numbers);
    /// Stores one number of one element; the element's other numbers become 0 when it did not
    /// exist.
    void storeComponent(std::uint32_t index, std::size_t component, double number);

    bool has(std::uint32_t index) const;
    /// A number of an element, or `fallback` where there is none.
    double number(std::uint32_t index, std::size_t component, double fallback = 0) const;

    /// The block of numbers (runs address it). Null when the storage is another.
    template<class T>
    const std::vector<T>* numbers() const
    {
        return std::get_if<std::vector<T>>(&m_numbers);
    }
    /// The elements 0..count-1 as one block; missing ones are `fallback`. Moves the block out when
    /// it is exactly that run, and leaves the array empty in every case.
    template<class T>
    std::vector<T> takeDense(std::size_t count, T fallback);

private:
    std::size_t m_width;
    std::vector<Run> m_runs;
    std::variant<std::vector<float>, std::vector<double>, std::vector<std::int32_t>> m_numbers;
};

} // namespace host
