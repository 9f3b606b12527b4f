// How a payload that is handed over in pieces runs along its plug.
#pragma once

#include "host/types/PlugPath.h"

#include <cstddef>
#include <cstdint>

namespace host::file {

/// The position of the step that the elements of a payload run along: the one with a range, else
/// the last one.
inline std::size_t runningStep(const PlugPath& plug)
{
    for (std::size_t i = 0; i < plug.stepCount; ++i) {
        if (plug.steps[i].isRange()) {
            return i;
        }
    }
    return plug.stepCount - 1;
}

/// Elements that the plug has room for: of its range, else one.
inline std::int64_t elementCount(const PlugPath& plug)
{
    const PlugStep& step = plug.steps[runningStep(plug)];
    return step.last - step.first + 1; // without an index both are -1: one
}

/// The indexed step next to the plug's last one, for multis inside multis; null if there is none.
inline const PlugStep* outerStep(const PlugPath& plug)
{
    for (std::size_t position = plug.stepCount; position-- > 1;) {
        if (plug.steps[position - 1].hasIndex()) {
            return &plug.steps[position - 1];
        }
    }
    return nullptr;
}

} // namespace host::file
