#include "host/nodes/nurbs/controlPointTweaks.h"

namespace host::nodes {

std::vector<ControlPointTweaks::Entry> readPoints(ComputeContext& context, std::size_t first,
                                                  std::span<const std::int32_t> outer)
{
    std::vector<ControlPointTweaks::Entry> entries;
    std::vector<std::int32_t> way(outer.begin(), outer.end());
    way.push_back(0);
    for (const std::int32_t index : context.elementIndices(first, outer)) {
        ControlPointTweaks::Entry entry;
        entry.index = static_cast<std::size_t>(index);
        way.back() = index;
        for (std::size_t axis = 0; axis < 3; ++axis) {
            const Value value = context.element(first + axis, way);
            entry.isSet[axis] = value.isNumber();
            entry.values[axis] = value.number(0);
        }
        entries.push_back(entry);
    }
    return entries;
}

ControlPointTweaks readTweaks(ComputeContext& context, std::size_t first)
{
    ControlPointTweaks tweaks;
    const bool areTweaks = context.number(first, 0) != 0;
    tweaks.isRelative = areTweaks && context.number(first + 1, 1) != 0;
    tweaks.entries = readPoints(context, first + 2);
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
