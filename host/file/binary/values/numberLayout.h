// What the bytes of a chunk of numbers are.
#pragma once

#include "host/file/binary/values/values.h"
#include "host/support/Expected.h"

#include <cstdint>

namespace host::file::binary {

enum class NumberType : std::uint8_t { Int16, Int32, Float, Double };

enum class NumberMeaning : std::uint8_t {
    Plain,
    Time,       ///< a whole number of the file's ticks
    PlainOrTime ///< nobody knows: the bits tell
};

/// Elements of `width` numbers, 1 to kPieceNumbers of them. All of an element's numbers are of the
/// type; but where `hasNarrowTimes`, its times are integers of 4 bytes among doubles.
struct NumberLayout {
    NumberType type = NumberType::Double;
    NumberStorage storage = NumberStorage::Double; ///< of what is sent
    std::size_t width = 1;
    std::size_t elementBytes = 8;
    bool hasNarrowTimes = false;
    bool isGuessed = false; ///< the attribute is not known: any double may be a time
    std::array<bool, PlugShape::kMaxWidth> isTime{};

    NumberMeaning meaningOf(std::size_t member) const
    {
        if (member < isTime.size() && isTime[member]) {
            return NumberMeaning::Time;
        }
        return isGuessed ? NumberMeaning::PlainOrTime : NumberMeaning::Plain;
    }
};

/// By the tag, the attribute, and the bytes that are left for `task.count` elements (at least one
/// byte). Failure: these do not agree.
Expected<NumberLayout> layoutOf(const ValueTask& task);

/// True for 8 bytes that are a count of ticks rather than a double: as a double they are no normal
/// number, or (a negative count) a nan whose high bits are all set. True of all counts up to 2^51,
/// half a year.
constexpr bool looksLikeTicks(std::uint64_t bits)
{
    constexpr unsigned kMantissaBits = 52;
    return bits != 0 && (bits >> kMantissaBits == 0 || bits >> (kMantissaBits - 1) == 0x1fff);
}

/// True for elements of a multi inside elements of another one, themselves without an index: rows
/// of pairs. The bytes that are left must be such rows to their end where the attribute is not
/// known, or where they could be plain numbers as well.
bool hasSparseForm(const ValueTask& task); // sparse.cpp

} // namespace host::file::binary
