// How a payload that is handed over in pieces runs along its plug.
#include "host/file/ascii/payloads/payloads.h"

namespace host::file::ascii {

std::size_t runningStep(const PlugPath& plug)
{
    for (std::size_t i = 0; i < plug.stepCount; ++i) {
        if (plug.steps[i].isRange()) {
            return i;
        }
    }
    return plug.stepCount - 1;
}

std::int64_t elementCount(const PlugPath& plug)
{
    const PlugStep& step = plug.steps[runningStep(plug)];
    return step.last - step.first + 1; // without an index both are -1: one
}

} // namespace host::file::ascii
