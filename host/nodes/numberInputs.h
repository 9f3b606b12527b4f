// Numbers as inputs of computations.
#pragma once

#include "host/math/Vec.h"
#include "host/types/ComputeContext.h"

#include <cmath>
#include <cstdint>

namespace host::nodes {

/// Three neighbouring inputs as a vector.
inline Vec3d vectorInput(ComputeContext& context, std::size_t first, const Vec3d& fallback)
{
    return {context.number(first, fallback.x), context.number(first + 1, fallback.y),
            context.number(first + 2, fallback.z)};
}

/// A whole number within bounds; `fallback` where the input is none.
inline std::int32_t wholeInput(ComputeContext& context, std::size_t position, std::int32_t fallback,
                               std::int32_t low, std::int32_t high)
{
    const double number = context.number(position, fallback);
    return number >= low  ? static_cast<std::int32_t>(std::fmin(number, high))
           : number < low ? low
                          : fallback;
}

/// A count from `least` to the most that are made; notes where more are asked for.
inline std::int32_t countInput(ComputeContext& context, std::size_t position, std::int32_t fallback,
                               std::int32_t most, std::int32_t least = 1)
{
    if (context.number(position, fallback) > most) {
        context.noteUncomputed();
    }
    return wholeInput(context, position, fallback, least, most);
}

inline bool flagInput(ComputeContext& context, std::size_t position, bool fallback)
{
    return context.number(position, fallback ? 1 : 0) != 0;
}

} // namespace host::nodes
