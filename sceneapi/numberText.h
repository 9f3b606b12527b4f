// Numbers as text, byte for byte as C's printf writes them in the "C" locale, many times faster.
// NaN and infinity are spelt as the GNU library does ("nan", "-inf") on every system.
#pragma once

#include <cstdint>

namespace orv {

/// The longest text of each function: its output needs that much room.
inline constexpr int kMaxGeneralText = 16;
inline constexpr int kMaxFixedText = 336;
inline constexpr int kMaxIntegerText = 11;

/// "%g". Returns the end of the text, which has no zero after it.
char* writeGeneral(char* out, double value);

/// "%.<decimals>f", decimals from 0 to 16; writeFixed(out, value, 16) is "%16.16f" but for the
/// padding of NaN and infinity.
char* writeFixed(char* out, double value, int decimals);

/// "%16.16f".
char* writeFixed16(char* out, double value);

/// "%d" and "%u".
char* writeInteger(char* out, std::int32_t value);
char* writeUnsigned(char* out, std::uint32_t value);

} // namespace orv
