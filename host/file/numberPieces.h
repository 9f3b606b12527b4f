// How readers of every format hand numbers over: in pieces, each in the kind that its attribute
// has.
#pragma once

#include "host/file/Command.h"
#include "host/file/toInt32.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <type_traits>

namespace host::file {

/// Numbers of a piece: a buffer that stays in the processor's cache.
inline constexpr std::size_t kPieceNumbers = 32768;
/// The highest index of an element.
inline constexpr std::uint32_t kMaxIndex = 2147483646;

inline NumberBlock blockOf(std::span<const float> numbers, std::size_t width)
{
    return {NumberStorage::Float, width, numbers, {}, {}};
}
inline NumberBlock blockOf(std::span<const double> numbers, std::size_t width)
{
    return {NumberStorage::Double, width, {}, numbers, {}};
}
inline NumberBlock blockOf(std::span<const std::int32_t> numbers, std::size_t width)
{
    return {NumberStorage::Int32, width, {}, {}, numbers};
}

/// A number in another kind; whole ones of fractions by `toInt32`.
template<class To, class From>
constexpr To converted(From number)
{
    if constexpr (std::is_same_v<To, std::int32_t> && std::is_floating_point_v<From>) {
        return toInt32(static_cast<double>(number));
    } else {
        return static_cast<To>(number);
    }
}

} // namespace host::file
