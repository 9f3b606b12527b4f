#include "host/nodes/nurbs/controlPointTweaks.h"

namespace host::nodes {

ControlPointTweaks readTweaks(ComputeContext& context, std::size_t first)
{
    ControlPointTweaks tweaks;
    const bool areTweaks = context.number(first, 0) != 0;
    tweaks.isRelative = areTweaks && context.number(first + 1, 1) != 0;
    for (const std::int32_t index : context.elementIndices(first + 2)) {
        ControlPointTweaks::Entry entry;
        entry.index = static_cast<std::size_t>(index);
        for (std::size_t axis = 0; axis < 3; ++axis) {
            const Value value = context.element(first + 2 + axis, index);
            entry.isSet[axis] = value.isNumber();
            entry.values[axis] = value.number(0);
        }
        tweaks.entries.push_back(entry);
    }
    return tweaks;
}

void applyTweaks(const ControlPointTweaks& tweaks, std::size_t stride, std::vector<double>& poles)
{
    const std::size_t count = poles.size() / stride;
    for (const ControlPointTweaks::Entry& entry : tweaks.entries) {
        if (entry.index >= count) {
            return;
        }
        for (std::size_t axis = 0; axis < 3; ++axis) {
            double& number = poles[entry.index * stride + axis];
            if (entry.isSet[axis]) {
                number = tweaks.isRelative ? number + entry.values[axis] : entry.values[axis];
            }
        }
    }
}

} // namespace host::nodes
