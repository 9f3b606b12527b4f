// Numbers whose highest byte comes first.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace host::file::binary {

inline std::uint16_t swapped(std::uint16_t bits)
{
    return __builtin_bswap16(bits);
}
inline std::uint32_t swapped(std::uint32_t bits)
{
    return __builtin_bswap32(bits);
}
inline std::uint64_t swapped(std::uint64_t bits)
{
    return __builtin_bswap64(bits);
}

/// The unsigned number of T's size at `bytes`, which need not be aligned.
template<class T>
T loadBits(const char* bytes)
{
    T bits;
    std::memcpy(&bits, bytes, sizeof bits);
    return std::endian::native == std::endian::little ? swapped(bits) : bits;
}

template<std::size_t kBytes>
struct BitsOf;
template<>
struct BitsOf<2> {
    using Type = std::uint16_t;
};
template<>
struct BitsOf<4> {
    using Type = std::uint32_t;
};
template<>
struct BitsOf<8> {
    using Type = std::uint64_t;
};

/// A number of 2, 4 or 8 bytes: std::int16_t, std::int32_t, std::uint32_t, float, double, ...
template<class T>
T load(const char* bytes)
{
    return std::bit_cast<T>(loadBits<typename BitsOf<sizeof(T)>::Type>(bytes));
}

/// `count` numbers of 4 bytes that stand next to each other, to anywhere else.
void loadWords(const char* bytes, std::size_t count, void* target);

/// `count` numbers that stand next to each other; `target` holds as many.
template<class T>
void loadMany(const char* bytes, std::size_t count, T* target)
{
    if constexpr (sizeof(T) == 4) {
        loadWords(bytes, count, target);
    } else {
        for (std::size_t i = 0; i < count; ++i) {
            target[i] = load<T>(bytes + i * sizeof(T));
        }
    }
}

} // namespace host::file::binary
