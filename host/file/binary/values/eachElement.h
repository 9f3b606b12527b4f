// Values one after another along a plug's range.
#pragma once

#include "host/file/binary/values/values.h"

#include <utility>

namespace host::file::binary {

/// Sends what `take` reads from the cursor for each element of the plug, up to the first one that
/// does not fit.
template<class Take>
void sendEachElement(Reader& reader, ValueTask& task, Take take)
{
    if (task.count > 1 && task.count > reader.valuesLeft) {
        task.cursor.fail("more values of ranges than are kept");
        return;
    }
    reader.valuesLeft -= task.count > 1 ? task.count : 0;
    PlugStep& step = task.command.plug.steps[runningStep(task.command.plug)];
    for (std::size_t i = 0; i < task.count; ++i) {
        auto data = take(task.cursor);
        if (task.cursor.hasFailed()) {
            return;
        }
        if (step.hasIndex()) {
            step.last = step.first;
        }
        sendValue(reader, task, Value::of(std::move(data)));
        if (step.hasIndex()) {
            step.last = ++step.first;
        }
    }
}

} // namespace host::file::binary
