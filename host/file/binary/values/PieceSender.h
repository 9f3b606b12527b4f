// Hands numbers over in pieces.
#pragma once

#include "host/file/binary/values/values.h"
#include "host/file/numberPieces.h"

#include <cstddef>
#include <span>

namespace host::file::binary {

/// Sends elements of numbers, one command after another along the plug's running step.
class PieceSender {
public:
    PieceSender(Reader& reader, ValueTask& task)
        : m_reader(reader)
        , m_command(task.command)
        , m_step(task.command.plug.steps[runningStep(task.command.plug)])
        , m_left(task.count)
    {
        m_command.payload = SetAttribute::Payload::Numbers;
    }

    /// `numbers` are whole elements of `width` numbers; in all as many as the task counts.
    template<class T>
    void send(std::span<const T> numbers, std::size_t width)
    {
        const std::int64_t count = static_cast<std::int64_t>(numbers.size() / width);
        if (m_step.hasIndex()) {
            m_step.last = m_step.first + count - 1;
        }
        m_command.numbers = blockOf(numbers, width);
        m_command.elementsAhead = m_left;
        m_left -= static_cast<std::size_t>(count);
        m_reader.sink.setAttribute(m_command);
        if (m_step.hasIndex()) {
            m_step.first += count;
            m_step.last = m_step.first;
        }
    }

private:
    Reader& m_reader;
    SetAttribute& m_command;
    PlugStep& m_step;
    std::size_t m_left; ///< elements
};

} // namespace host::file::binary
