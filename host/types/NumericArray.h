// The elements of a numeric multi attribute (vertices, tweaks, keys, weights): sparse by runs,
// typed, one block of numbers.
#pragma once

#include "host/types/AttributeKind.h"

#include <cstddef>
#include <cstdint>
#include <map>
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
/// numbers given, never to an index. Any order of stores costs at most a logarithm per run; an
/// array whose runs come out of order is put in order when `runs` is asked for, so the first such
/// question after a store must not be asked by two threads at once.
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
    const std::vector<Run>& runs() const;
    std::size_t elementCount() const { return m_elementCount; }
    bool empty() const { return m_elementCount == 0; }
    /// One past the highest logical index; 0 when empty.
    std::uint64_t endIndex() const;

    /// Stores numbers.size() / width elements from logical index `first` on, over what was there.
    /// Appending after the last element is the fast way; T is the storage's type (numbers of
    /// another one are converted). Elements beyond index 2^32-2 are left out.
    template<class T>
    void store(std::uint32_t first, std::span<const T> numbers);
    /// Takes memory for so many more elements at once, unless they are fewer than there are: small
    /// steps are better left to the block's own growth.
    void reserveMore(std::size_t elements);
    /// Stores one number of one element; the element's other numbers become 0 when it did not
    /// exist. A component outside the width is ignored.
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
    /// it is exactly that run, and leaves the array empty in every case. T is the storage's type
    /// (another one converts).
    template<class T>
    std::vector<T> takeDense(std::size_t count, T fallback);

private:
    const Run* findRun(std::uint32_t index) const;
    std::uint32_t nextFirst(std::uint32_t index) const;
    Run* lastRun();
    void addRun(const Run& run);
    template<class T>
    void appendNumbers(const T* numbers, std::size_t count);
    template<class T>
    void overwrite(std::size_t offset, const T* numbers, std::size_t count);
    template<class T>
    void storeAnywhere(std::uint32_t first, const T* numbers, std::size_t count);
    std::size_t numberCount() const;
    void clear();

    std::size_t m_width;
    std::size_t m_elementCount = 0;
    mutable std::vector<Run> m_runs; ///< all runs while they came in order, else made from m_sorted
    std::map<std::uint32_t, Run> m_sorted; ///< all runs by `first` once they came out of order
    mutable bool m_isStale = false;        ///< m_runs lags behind m_sorted
    std::variant<std::vector<float>, std::vector<double>, std::vector<std::int32_t>> m_numbers;
};

} // namespace host
