// Numbers of scenes as whole ones.
#pragma once

namespace host::nodes {

/// The whole part of a number; `fallback` for one that no int holds, or that is none.
inline int wholeNumber(double number, int fallback)
{
    constexpr double kMost = 2147483647;
    return number >= -kMost && number <= kMost ? static_cast<int>(number) : fallback;
}

} // namespace host::nodes
